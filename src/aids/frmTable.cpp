#include "aids/frmTable.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "aids/windows/TableSurfaces.h"
#include "base/Number.h"
#include "base/ScopeExit.h"
#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"

namespace aids {
namespace {

using platform::qt::Column;
using platform::qt::InCharacters;
using platform::qt::Label;
using platform::qt::Named;
using platform::qt::On;
using platform::qt::Row;
using platform::qt::Stretch;
using platform::qt::ToPixels;
using platform::qt::ToTwips;

constexpr int nameWidth = 20;
constexpr int countWidth = 6;  // characters
constexpr int valueWidth = 11;
constexpr int smallestFont = 6;  // points
constexpr int largestFont = 14;
constexpr int firstFont = 10;
constexpr int fontStep = 2;
constexpr int largeChange = 4;
constexpr int modesInAColumn = 4;

std::string TextOf(const QLineEdit& field) { return field.text().toStdString(); }

QLineEdit* NumberField(const char* name, int characters) {
    auto* field = Named(name, new QLineEdit);
    field->setFixedWidth(InCharacters(characters, 0).width() + field->sizeHint().height());
    return field;
}

// The field of a hexadecimal value is as wide as so many "F": digits must not be wider.
QFont SurfaceFont(int points) {
    const QFont font("Arial", points);
    const QFontMetrics metrics(font);
    if (metrics.horizontalAdvance('0') <= metrics.horizontalAdvance('F')) return font;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSize(points);
    return fixed;
}

}  // namespace

frmTable::frmTable(platform::Host& host, QWidget* owner)
    : Form("frmTable", "Create Table", owner), host_(host) {
    auto* ok = Button({"OK", "OK", [this] { OK_Click(); }});
    ok->setDefault(true);
    auto* cancel = Button({"Cancel", "Cancel", [this] { Cancel_Click(); }});
    cancel->setFocusPolicy(Qt::TabFocus);  // a click on it asks for no correction of a field
    QBoxLayout* top = Row({NameFields(), FillModes(), Column({ok, cancel, Stretch()})});
    top->setStretch(0, 1);
    QBoxLayout* all = Column({top, Surfaces()});
    all->setStretch(1, 1);
    LayOut({all}, Size::OfUser);
    ResizeTo(120, 40);
    Control<QLineEdit>("txtFontSize").setText(QString::number(firstFont));
    ArrangeTable(firstFont);
    On(qApp, &QApplication::focusChanged, &listener_, [this](QWidget*, QWidget* now) { FocusMoved(now); });
}

QLayout* frmTable::NameFields() {
    txtInput = Named("txtInput", new QLineEdit);
    txtInput->setMinimumWidth(InCharacters(nameWidth, 0).width());
    txtInWidth = NumberField("txtInWidth", countWidth);
    txtOutput = Named("txtOutput", new QLineEdit);
    txtOutWidth = NumberField("txtOutWidth", countWidth);
    txtRows = NumberField("txtRows", countWidth);
    auto* size =
        new platform::qt::UpDown("UpDownFont", "txtFontSize", [this](int step) { UpDownFont_Change(step); });
    const struct {
        const char* Name;
        const char* Caption;
        QWidget* Field;
    } rows[] = {{"Label1", "Input:", txtInput},   {"Label3", "Width:", txtInWidth},
                {"Label2", "Output:", txtOutput}, {"Label4", "Width:", txtOutWidth},
                {"Label5", "Rows:", txtRows},     {"Label6", "Font Size:", size}};
    auto* grid = new QGridLayout;
    int place = 0;
    for (const auto& row : rows) {
        grid->addWidget(Label(row.Name, row.Caption, row.Field), place / 2, place % 2 * 2);
        grid->addWidget(row.Field, place / 2, place % 2 * 2 + 1);
        ++place;
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(place / 2, 1);
    return grid;
}

QLayout* frmTable::FillModes() {
    fill_ = platform::qt::RadioButtons({{"optInc", "Increasing Value"},
                                        {"optDec", "Decreasing Value"},
                                        {"optZero", "Zero"},
                                        {"optSet", "Set"},
                                        {"optOneHotL", "One Hot Left"},
                                        {"optOneHotR", "One Hot Right"},
                                        {"optFillL", "Fill Left"},
                                        {"optFillR", "Fill Right"}},
                                       this);
    fill_->button(static_cast<int>(Fill::Inc))->setChecked(true);
    On(fill_, &QButtonGroup::idClicked, this, [this] { Fill_Click(); });
    txtFrom = NumberField("txtFrom", valueWidth);
    txtFrom->setText("0");
    auto* modes = platform::qt::Columns(platform::qt::Items(fill_->buttons()), modesInAColumn);
    QBoxLayout* from = Row({Label("lblFrom", "From:", txtFrom), txtFrom, Stretch()});
    return Row({platform::qt::Frame("Frame1", "Set Input", Column({modes, from}))});
}

QScrollBar* frmTable::ScrollBar(const char* name, Qt::Orientation orientation) {
    auto* bar = Named(name, new QScrollBar(orientation));
    bar->setRange(0, 0);
    bar->setSingleStep(1);
    bar->setPageStep(largeChange);
    bar->setEnabled(false);
    On(bar, &QScrollBar::valueChanged, this, [this] { PlaceSurfaces(); });
    return bar;
}

QLayout* frmTable::Surfaces() {
    picParentRuler = Named("picParentRuler", new QWidget);
    picParentGrid = Named("picParentGrid", new QWidget);
    picParentGrid->setMinimumSize(InCharacters(60, 8));
    picRuler = new RulerSurface("picRuler", values_, geometry_);
    picRuler->setParent(picParentRuler);
    picGrid = new GridSurface("picGrid", values_, geometry_);
    picGrid->setParent(picParentGrid);
    picGrid->OnPress = [this](const TableCell& cell) { picGrid_MouseDown(cell); };
    VScroll = ScrollBar("VScroll", Qt::Vertical);
    HScroll = ScrollBar("HScroll", Qt::Horizontal);
    auto* grid = new QGridLayout;
    grid->setSpacing(0);
    grid->addWidget(picParentRuler, 0, 0);
    grid->setRowMinimumHeight(1, ToPixels(rulerGap));
    grid->addWidget(picParentGrid, 2, 0);
    grid->addWidget(VScroll, 2, 1);
    grid->addWidget(HScroll, 3, 0);
    grid->setRowStretch(2, 1);
    return grid;
}

// A field is looked at when the focus moves to another control of the form.
void frmTable::FocusMoved(QWidget* now) {
    if (now == nullptr || now->window() != this || now == focused_) return;
    LostFocus(std::exchange(focused_, now));
}

void frmTable::LostFocus(const QWidget* left) {
    if (left == txtInWidth) {
        if (!IsTaken(*txtInWidth, values_.TakeWidth(Half::Input, TextOf(*txtInWidth)))) return;
    } else if (left == txtOutWidth) {
        if (!IsTaken(*txtOutWidth, values_.TakeWidth(Half::Output, TextOf(*txtOutWidth)))) return;
    } else if (left == txtRows) {
        if (!IsTaken(*txtRows, values_.TakeRows(TextOf(*txtRows)))) return;
        if (values_.RowCount > 0 && !values_.InputFilled) FillInput();
    } else if (left != txtInput && left != txtOutput && left != txtFrom) {
        return;
    }
    PaintRuler();
    PaintGrid();
}

bool frmTable::IsTaken(QLineEdit& field, const std::optional<Refusal>& refusal) {
    if (!refusal) return true;
    if (!refusal->Correction.empty()) field.setText(QString::fromStdString(refusal->Correction));
    picRuler->update();  // empty, as the table is until the field is corrected
    picGrid->update();
    Tell(refusal->Message, &field);
    return false;
}

// Not before the focus has come to rest. The control that it is taken back from has not lost it.
void frmTable::Tell(const std::string& text, QLineEdit* focusBack) {
    isTalking_ = true;
    platform::qt::Soon(this, [this, text, focusBack] {
        const QPointer<frmTable> alive(this);
        host_.Boxes.Say(text);
        if (alive == nullptr) return;
        isTalking_ = false;
        if (focusBack == nullptr) return;
        focused_ = focusBack;
        focusBack->setFocus();
        focusBack->selectAll();
    });
}

void frmTable::ArrangeTable(int fontSize) {
    const QFont font = SurfaceFont(fontSize);
    picRuler->setFont(font);
    picGrid->setFont(font);
    for (QScrollBar* bar : {VScroll, HScroll}) bar->setValue(0);
    picParentRuler->setFixedHeight(ToPixels(2 * picRuler->Sizes().Height + rulerMargin));
    picRuler->resize(ToPixels(surfaceSize), picParentRuler->height());
    picGrid->resize(ToPixels(surfaceSize), ToPixels(surfaceSize));
}

void frmTable::PaintRuler() {
    geometry_ = TableGeometry(picRuler->Sizes(), values_.InputWidth, values_.OutputWidth);
    picRuler->SetTitles(TextOf(*txtInput), TextOf(*txtOutput));
}

void frmTable::PaintGrid() {
    if (values_.IsEmpty()) return picGrid->update();
    const platform::HourglassScope hourglass(host_.Desktop);
    SetScrollBars();
    picGrid->repaint();
}

void frmTable::SetScrollBars() {
    if (values_.IsEmpty()) return;
    const auto set = [](QScrollBar& bar, const ScrollRange& range) {
        if (range.IsEnabled) bar.setMaximum(range.Max);
        bar.setEnabled(range.IsEnabled);
    };
    set(*VScroll, RowScroll(values_, geometry_, ToTwips(picParentGrid->height()), ToTwips(picGrid->y())));
    set(*HScroll, ColumnScroll(values_, geometry_, ToTwips(picParentGrid->width()), ToTwips(picGrid->x())));
}

void frmTable::PlaceSurfaces() {
    const int left = -ToPixels(static_cast<float>(HScroll->value()) * geometry_.CellWidth);
    const int top = -ToPixels(static_cast<float>(VScroll->value()) * geometry_.CellHeight);
    picRuler->move(left, 0);
    picGrid->move(left, top);
}

void frmTable::resizeEvent(QResizeEvent* event) {
    platform::qt::Guarded([&] { SetScrollBars(); });
    Form::resizeEvent(event);
}

void frmTable::wheelEvent(QWheelEvent* event) {
    platform::qt::Guarded([&] {
        QObject& bar = *VScroll;  // by hand: what it does not want would come back
        if (VScroll->isEnabled()) bar.event(event);
    });
}

void frmTable::FillInput() {
    const std::string refusal = values_.FillInput(static_cast<Fill>(fill_->checkedId()), TextOf(*txtFrom));
    if (!refusal.empty()) Tell(refusal);
}

void frmTable::Fill_Click() {
    const auto mode = static_cast<Fill>(fill_->checkedId());
    const bool counts = mode == Fill::Inc || mode == Fill::Dec;
    for (auto* control : {&Control<QWidget>("lblFrom"), &Control<QWidget>("txtFrom")})
        control->setEnabled(counts);
    FillInput();
    PaintGrid();
}

void frmTable::UpDownFont_Change(int step) {
    auto& text = Control<QLineEdit>("txtFontSize");
    const double wanted = base::LeadingNumber(TextOf(text)) + step * fontStep;
    const int size = static_cast<int>(std::clamp<double>(wanted, smallestFont, largestFont));
    text.setText(QString::number(size));
    ArrangeTable(size);
    PaintRuler();
    PaintGrid();
}

void frmTable::picGrid_MouseDown(const TableCell& cell) {
    if (cell.Column != hexColumn) {
        values_.Toggle(cell.Half, cell.Row, cell.Column);
        picGrid->UpdateBit(cell);
    } else if (!isTalking_) {  // not for each press of a double click
        isTalking_ = true;
        platform::qt::Soon(this, [this, cell] { EnterHex(cell); });  // when the press is over
    }
}

void frmTable::EnterHex(const TableCell& cell) {
    const QPointer<frmTable> alive(this);
    const base::ScopeExit end([&] {
        if (alive != nullptr) isTalking_ = false;
    });
    const std::string half = cell.Half == Half::Input ? "input" : "output";
    const auto typed =
        host_.Boxes.InputBox("Enter the new " + half + " value as a hexadecimal number", "", "");
    if (alive == nullptr || !typed) return;
    const std::string refusal = values_.EnterHex(cell.Half, cell.Row, *typed);
    if (!refusal.empty()) return host_.Boxes.Say(refusal);
    PaintGrid();
}

void frmTable::OK_Click() {
    Control<QWidget>("OK").setFocus();  // Enter leaves the focus in a field that is not taken yet
    if (values_.IsEmpty() || isTalking_) return;
    const platform::HourglassScope hourglass(host_.Desktop);
    host_.Clip.SetText(values_.TableText(TextOf(*txtInput), TextOf(*txtOutput)));
    accept();
}

// Also what the user had on the clipboard: the command that opened the form pastes what lies there.
void frmTable::Cancel_Click() {
    host_.Clip.SetText("");
    Form::Cancel_Click();
}

}  // namespace aids
