#include "platform/qt/HostDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "base/Text.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Form.h"
#include "platform/qt/Guard.h"
#include "platform/qt/HostFileDialog.h"
#include "platform/qt/HostSystem.h"

namespace platform::qt {
namespace {

constexpr auto DefaultTitle = "Korvane";
constexpr std::size_t MaxShownText = 1 << 16;  // bytes of a message; the rest is cut
constexpr int MaxTextHeight = 400;             // pixels; a higher text scrolls
constexpr int MaxTextWidth = 500;              // pixels; a wider text is wrapped
constexpr std::size_t MaxWord = 60;            // bytes; a longer one may go over several lines

constexpr struct {
    Buttons Choice;
    QMessageBox::StandardButtons Shown;
} ButtonTable[] = {
    {Buttons::Ok, QMessageBox::Ok},
    {Buttons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel},
    {Buttons::YesNo, QMessageBox::Yes | QMessageBox::No},
    {Buttons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel},
};

constexpr struct {
    QMessageBox::StandardButton Button;
    Answer Meaning;
    const char* Caption;
} AnswerTable[] = {
    {QMessageBox::Ok, Answer::Ok, "OK"},
    {QMessageBox::Cancel, Answer::Cancel, "Cancel"},
    {QMessageBox::Yes, Answer::Yes, "&Yes"},
    {QMessageBox::No, Answer::No, "&No"},
};

constexpr struct {
    Icon Picture;
    QMessageBox::Icon Shown;
} IconTable[] = {
    {Icon::None, QMessageBox::NoIcon},
    {Icon::Stop, QMessageBox::Critical},
    {Icon::Question, QMessageBox::Question},
    {Icon::Warning, QMessageBox::Warning},
    {Icon::Information, QMessageBox::Information},
};

QString ShownLines(const std::string& text) {
    std::string shown = base::ReplaceAll(base::ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
    if (shown.size() > MaxShownText) shown = base::Left(shown, MaxShownText) + "\n...";
    return Shown(shown);
}

// A word too long for a line, such as a path, with marks where it may go on in the next one.
std::string Breakable(std::string_view word) {
    constexpr auto mark = "\xE2\x80\x8B";  // a blank of no width
    if (word.size() <= MaxWord) return std::string(word);
    std::string result;
    std::size_t part = 0;
    for (const char c : word) {
        const bool isInside = (static_cast<unsigned char>(c) & 0xC0) == 0x80;  // of a character
        if (part >= MaxWord && !isInside) part = 0;
        if (part == 0 && !result.empty()) result += mark;
        result += c;
        part = c == '\\' || c == '/' ? 0 : part + 1;
    }
    return result;
}

QString ShownText(const std::string& text) {
    std::string result;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(" \r\n"), rest.size() - 1) + 1;
        result += Breakable(rest.substr(0, end));
        rest.remove_prefix(end);
    }
    return ShownLines(result);
}

QString TitleOf(const std::string& title) {
    return title.empty() ? QString(DefaultTitle) : ShownLines(title);
}

// The text of a box at the size that it needs; one that would make the box higher than a screen scrolls.
QWidget* MakeText(const QString& text, QWidget* box) {
    auto* label = new QLabel(text, box);
    label->setObjectName("Text");
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->ensurePolished();
    const int width = std::min(label->sizeHint().width(), MaxTextWidth);
    label->setWordWrap(true);
    const int height = label->heightForWidth(width);
    label->setMinimumSize(width, height);
    if (height <= MaxTextHeight) return label;
    auto* frame = new QScrollArea(box);
    frame->setFrameShape(QFrame::NoFrame);
    frame->setMinimumWidth(width + frame->verticalScrollBar()->sizeHint().width());
    frame->setFixedHeight(MaxTextHeight);
    frame->setWidget(label);
    return frame;
}

// The box sizes its own label by rules that cut texts off; ours takes its place.
void LayOut(QMessageBox& box) {
    auto* label = box.findChild<QLabel*>("qt_msgbox_label");
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (label != nullptr && grid != nullptr) {
        delete grid->replaceWidget(label, MakeText(label->text(), &box));
        label->hide();
    }
    // As wide as the box, which is laid out anew whenever it is shown.
    if (auto* buttons = box.findChild<QDialogButtonBox*>())
        buttons->setMinimumWidth(std::max(WidthFor(box.windowTitle()), buttons->sizeHint().width()));
}

QMessageBox* MakeMessageBox(const MessageBoxRequest& request, QWidget* parent) {
    auto* box = new QMessageBox(parent);
    box->setObjectName("MessageBox");
    box->setWindowTitle(TitleOf(request.Title));
    box->setTextFormat(Qt::PlainText);
    box->setText(ShownText(request.Text));
    for (const auto& row : IconTable)
        if (row.Picture == request.Picture) box->setIcon(row.Shown);
    for (const auto& row : ButtonTable)
        if (row.Choice == request.Choice) box->setStandardButtons(row.Shown);
    for (const auto& row : AnswerTable)
        if (auto* button = box->button(row.Button)) button->setText(row.Caption);
    LayOut(*box);
    return box;
}

// What the box answers when it is closed without a button.
Answer ClosedAnswer(Buttons choice) {
    if (choice == Buttons::Ok) return Answer::Ok;
    return choice == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

std::int32_t FromColor(const QColor& color) {
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

// A font that is not installed is shown in another; the dialog presets that one, not the first best.
QFont ToFont(const FontChoice& choice) {
    QFont font(QString::fromStdString(choice.Name));
    if (!QFontDatabase::families().contains(font.family())) font.setFamily(QFontInfo(font).family());
    if (choice.Size > 0) font.setPointSizeF(choice.Size);
    font.setBold(choice.Bold);
    font.setItalic(choice.Italic);
    font.setUnderline(choice.Underline);
    return font;
}

}  // namespace

HostDialogs::HostDialogs(const FileSystem& files, std::function<QWidget*()> parent)
    : files_(files), parent_(std::move(parent)) {}

QWidget* HostDialogs::Parent() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = parent_ ? parent_() : QApplication::activeWindow()) return active;
    // Another program has the focus, one dialog follows another, or there is only the splash window yet: a
    // box without a parent could come up behind it.
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        const Qt::WindowType type = window->windowType();
        return window->isVisible() && (type == Qt::Window || type == Qt::SplashScreen);
    });
    return shown == windows.end() ? nullptr : *shown;
}

Answer HostDialogs::MessageBox(const MessageBoxRequest& request) {
    Modal<QMessageBox> box(MakeMessageBox(request, Parent()));
    box.Run();
    if (box.IsThere() && box->clickedButton() != nullptr)
        for (const auto& row : AnswerTable)
            if (box->standardButton(box->clickedButton()) == row.Button) return row.Meaning;
    return ClosedAnswer(request.Choice);
}

std::optional<std::string> HostDialogs::InputBox(const std::string& prompt, const std::string& title,
                                                 const std::string& preset) {
    Modal<QInputDialog> box(new QInputDialog(Parent()));
    box->setObjectName("InputBox");
    box->setWindowTitle(TitleOf(title));
    box->setInputMode(QInputDialog::TextInput);
    box->setLabelText(
        ShownLines(base::ReplaceAll(prompt, "&", "&&")));  // a field's label can have an access key
    if (auto* field = box->findChild<QLineEdit*>()) field->setMinimumWidth(WidthFor(box->windowTitle()));
    for (auto* label : box->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
    box->setTextValue(QString::fromStdString(preset));
    box->setOkButtonText("OK");
    box->setCancelButtonText("Cancel");
    if (!box.Run()) return std::nullopt;
    return box->textValue().toStdString();
}

std::optional<std::string> HostDialogs::RunFileDialog(bool save, const FileDialogRequest& request) {
    const auto mode = save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen;
    Modal<HostFileDialog> box(new HostFileDialog(Parent(), mode, request, files_, *this));
    if (!box.Run()) return std::nullopt;
    return box->Chosen();
}

std::optional<std::string> HostDialogs::OpenFile(const FileDialogRequest& request) {
    return RunFileDialog(false, request);
}

std::optional<std::string> HostDialogs::SaveFile(const FileDialogRequest& request) {
    return RunFileDialog(true, request);
}

std::optional<FontChoice> HostDialogs::ChooseFont(const FontChoice& preset) {
    Modal<QFontDialog> box(new QFontDialog(ToFont(preset), Parent()));
    box->setObjectName("FontDialog");
    box->setOption(QFontDialog::DontUseNativeDialog);
    box->setWindowTitle("Font");
    std::int32_t color = preset.Color;
    if (auto* buttons = box->findChild<QDialogButtonBox*>()) {
        auto* button = buttons->addButton("&Color...", QDialogButtonBox::ActionRole);
        button->setObjectName("Color");
        On(button, &QPushButton::clicked, button, [&] { color = ChooseColor(color).value_or(color); });
    }
    if (!box.Run()) return std::nullopt;
    const QFont font = box->selectedFont();
    return FontChoice{
        font.family().toStdString(), font.pointSizeF(), font.bold(), font.italic(), font.underline(), color};
}

std::optional<std::int32_t> HostDialogs::ChooseColor(std::int32_t preset) {
    Modal<QColorDialog> box(new QColorDialog(ToColor(preset), Parent()));
    box->setObjectName("ColorDialog");
    box->setOption(QColorDialog::DontUseNativeDialog);
    box->setWindowTitle("Color");
    if (!box.Run()) return std::nullopt;
    return FromColor(box->selectedColor());
}

}  // namespace platform::qt
