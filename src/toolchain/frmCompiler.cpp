#include "toolchain/frmCompiler.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "base/Text.h"
#include "platform/qt/Guard.h"

namespace toolchain {

using platform::qt::Guarded;
using platform::qt::On;

namespace {

struct FrameRow {
    const char* Name;
    const char* Caption;
    int Row, Column, RowSpan;  // place on the first tab
    int BoxRows;               // boxes below each other before the next column begins
};
constexpr FrameRow frames[] = {
    {"Frame2", "Download", 0, 0, 1, 3},
    {"Frame3", "Doc File Options", 1, 0, 1, 3},
    {"Frame4", "General", 0, 1, 2, 5},
};

QPushButton* Button(const char* name, const char* caption, QWidget* parent) {
    auto* button = new QPushButton(QString::fromUtf8(caption), parent);
    button->setObjectName(QString::fromUtf8(name));
    return button;
}

// The boxes column by column, packed to the upper left.
QGridLayout* Columns(const std::vector<QCheckBox*>& boxes, int rows) {
    auto* grid = new QGridLayout;
    const int count = static_cast<int>(boxes.size());
    for (int i = 0; i < count; ++i) grid->addWidget(boxes[static_cast<std::size_t>(i)], i % rows, i / rows);
    grid->setRowStretch(rows, 1);
    grid->setColumnStretch((count - 1) / rows, 1);
    grid->setHorizontalSpacing(24);
    return grid;
}

Qt::CheckState StateOf(std::int16_t value) {
    if (value == 2) return Qt::PartiallyChecked;
    return value == 1 ? Qt::Checked : Qt::Unchecked;
}

std::int16_t ValueOf(Qt::CheckState state) {
    if (state == Qt::PartiallyChecked) return 2;
    return state == Qt::Checked ? 1 : 0;
}

}  // namespace

frmCompiler::frmCompiler(session::App app, CompilerOptions& options, QWidget* parent)
    : QDialog(parent), app_(app), options_(options) {
    setObjectName(QStringLiteral("frmCompiler"));
    setWindowTitle(QStringLiteral("Compiler Options"));
    auto* layout = new QVBoxLayout(this);
    BuildTabs();
    layout->addWidget(tabs_);
    layout->addWidget(BuildButtons());
    layout->setSizeConstraint(QLayout::SetFixedSize);

    ParseCompilerFlags(app_.State.CompilerFlags, options_);
    ShowOptions();
}

void frmCompiler::BuildTabs() {
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("SSTab1"));
    tabs_->setUsesScrollButtons(false);  // wide enough for all tabs
    tabs_->addTab(BuildOutputFiles(), QStringLiteral("Output Files"));
    tabs_->addTab(BuildMinimization(), QStringLiteral("Minimization"));
    tabs_->addTab(BuildBoxes(CompilerTab::Optimization), QStringLiteral("Optimization"));
    tabs_->addTab(BuildBoxes(CompilerTab::General), QStringLiteral("General"));
    tabs_->addTab(BuildLibrary(), QStringLiteral("Library"));
    const int device = tabs_->addTab(BuildDevice(), QStringLiteral("Device"));
    tabs_->setTabVisible(device, false);  // the device is chosen in frmDevices
}

QCheckBox* frmCompiler::AddBox(const CompilerOption& option) {
    auto* box = new QCheckBox(QString::fromUtf8(option.Caption));
    box->setObjectName(QString::fromUtf8(option.Control));
    box->setToolTip(QString::fromUtf8(option.Tip));
    boxes_.push_back({option.Field, box});
    return box;
}

std::vector<QCheckBox*> frmCompiler::AddBoxes(CompilerTab tab, const char* frame) {
    std::vector<QCheckBox*> boxes;
    for (const CompilerOption& option : CompilerOptionTable()) {
        if (option.Tab == tab && std::string_view(option.Frame) == frame) boxes.push_back(AddBox(option));
    }
    return boxes;
}

QWidget* frmCompiler::BuildOutputFiles() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    for (const FrameRow& row : frames) {
        auto* frame = new QGroupBox(QString::fromUtf8(row.Caption), page);
        frame->setObjectName(QString::fromUtf8(row.Name));
        frame->setLayout(Columns(AddBoxes(CompilerTab::OutputFiles, row.Name), row.BoxRows));
        grid->addWidget(frame, row.Row, row.Column, row.RowSpan, 1);
    }
    return page;
}

QWidget* frmCompiler::BuildMinimization() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    minimization_ = new QButtonGroup(page);
    int index = 0;
    for (const char* caption : MinimizationCaptions) {
        auto* button = new QRadioButton(QString::fromUtf8(caption), page);
        button->setObjectName(QStringLiteral("optMinimization%1").arg(index));
        minimization_->addButton(button, index++);
        layout->addWidget(button);
    }
    layout->addStretch(1);
    return page;
}

QWidget* frmCompiler::BuildBoxes(CompilerTab tab) {
    auto* page = new QWidget;
    const auto boxes = AddBoxes(tab, "");
    page->setLayout(Columns(boxes, static_cast<int>(boxes.size())));
    return page;
}

QWidget* frmCompiler::BuildLibrary() {
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    library_ = new QLineEdit(page);
    library_->setObjectName(QStringLiteral("Library"));
    library_->setAccessibleName(QStringLiteral("Library"));
    auto* choose = Button("ChooseLibrary", "Library", page);
    On(choose, &QPushButton::clicked, this, [this] { ChooseLibrary_Click(); });
    layout->addWidget(library_, 0, 0);
    layout->addWidget(choose, 0, 1);
    layout->setRowStretch(1, 1);
    return page;
}

// Controls of a former way to choose the device: only chkDevInFile is ever set.
QWidget* frmCompiler::BuildDevice() {
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    const auto add = [&](QWidget* control, const char* name, int row, int column) {
        control->setObjectName(QString::fromUtf8(name));
        layout->addWidget(control, row, column);
    };
    add(new QLineEdit(page), "txtMnemonic", 0, 0);
    add(new QComboBox(page), "cboPackages", 0, 1);
    add(new QListWidget(page), "lstDevices", 1, 0);
    add(new QListWidget(page), "lstManufacturers", 1, 1);
    devInFile_ = new QCheckBox(QStringLiteral("Device in File"), page);
    add(devInFile_, "chkDevInFile", 2, 0);
    return page;
}

QWidget* frmCompiler::BuildButtons() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    auto* ok = Button("OK", "OK", row);
    auto* cancel = Button("Cancel", "Cancel", row);
    auto* apply = Button("cmdApply", "Apply", row);
    for (QPushButton* button : {ok, cancel, apply}) layout->addWidget(button);
    ok->setDefault(true);
    On(ok, &QPushButton::clicked, this, [this] { OK_Click(); });
    On(cancel, &QPushButton::clicked, this, [this] { Cancel_Click(); });
    On(apply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    return row;
}

void frmCompiler::ShowOptions() {
    for (const OptionBox& option : boxes_) option.Box->setCheckState(StateOf(options_.*option.Field));
    // A digit above the last button shows none, and is kept until the user chooses one.
    if (auto* button = minimization_->button(ShownMinimization(options_))) button->setChecked(true);
    library_->setText(QString::fromStdString(app_.State.LibraryName));
    devInFile_->setChecked(app_.State.DeviceName.size() < 2);
}

CompilerOptions frmCompiler::ControlValues() const {
    CompilerOptions values = options_;
    for (const OptionBox& option : boxes_) values.*option.Field = ValueOf(option.Box->checkState());
    if (minimization_->checkedId() >= 0) {
        values.Minimization = static_cast<std::int16_t>(minimization_->checkedId());
    }
    return values;
}

void frmCompiler::Apply(CompilerTab tab) { ReadCompilerTab(tab, ControlValues(), options_); }

void frmCompiler::OK_Click() {
    using enum CompilerTab;
    for (const CompilerTab tab : {OutputFiles, Minimization, Optimization, General}) Apply(tab);
    app_.State.CompilerFlags = WriteCompilerFlags(options_);
    app_.State.LibraryName = base::Upper(library_->text().toStdString());
    accept();
}

void frmCompiler::Cancel_Click() { reject(); }

void frmCompiler::cmdApply_Click() {
    const auto tab = static_cast<CompilerTab>(tabs_->currentIndex());
    if (tab >= CompilerTab::Library) return;  // the library's name changes by OK alone
    Apply(tab);
    app_.State.CompilerFlags = WriteCompilerFlags(options_);
}

void frmCompiler::ChooseLibrary_Click() {
    std::string& name = app_.State.LibraryName;
    if (name.size() < 4) name = "TESK.DL";  // stays even if the user cancels
    const auto choice =
        app_.Host.Boxes.OpenFile({.Title = "Select Library File",
                                  .Filter = "Library Files (*.dl)|*.dl",
                                  .FileName = name,
                                  .InitialFolder = app_.State.WorkDir,
                                  .DefaultExtension = ".DL",
                                  .Flags = platform::FileMustExist | platform::PathMustExist});
    if (choice) library_->setText(QString::fromStdString(*choice));
}

bool frmCompiler::ShowCatalog() { return toolchain::ShowCatalog(app_); }

void frmCompiler::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_F1) return QDialog::keyPressEvent(event);
    Guarded([this] { app_.Hall.ShowHelpTopic("Compiler"); });
}

}  // namespace toolchain
