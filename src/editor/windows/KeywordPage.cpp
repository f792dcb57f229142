#include "editor/windows/KeywordPage.h"

#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>

#include "base/Text.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Controls.h"
#include "platform/qt/Guard.h"

namespace editor {
namespace {

using platform::qt::CheckBox;
using platform::qt::Column;
using platform::qt::Frame;
using platform::qt::InCharacters;
using platform::qt::Item;
using platform::qt::Named;
using platform::qt::On;
using platform::qt::PushButton;
using platform::qt::Row;
using platform::qt::Stretch;

constexpr const char* operatorText =
    "A keyword cannot contain or be a TESK language operator or any character that cannot be used in a TESK "
    "variable name.";

QPixmap Patch(std::int32_t color) {
    QPixmap patch(InCharacters(3, 1));
    patch.fill(platform::qt::ToColor(color));
    return patch;
}

QLineEdit* TextInStyle(const char* name) {
    auto* text = Named(name, new QLineEdit);
    text->setReadOnly(true);
    return text;
}

void SetStyle(QLineEdit& text, const session::KeywordRec& word) {
    platform::qt::ShowOnPaper(text, word.Color);
    QFont font = text.font();
    font.setBold(word.Bold);
    font.setItalic(word.Italic);
    font.setUnderline(word.Underline);
    text.setFont(font);
}

}  // namespace

KeywordPage::KeywordPage(session::App& app) : app_(app), edit_(app.State) {
    EnableHighlight = CheckBox({"EnableHighlight", "Enable Syntax Highlighting"});
    EnableHighlight->setChecked(app.State.HighlightEnabled);
    auto* frames = Column({Frame("Frame1", "Colors:", ColorGrid()),
                           Frame("Frame2", "Attribute:", AttributeBoxes()), Stretch()});
    auto* layout = Column({EnableHighlight, Row({ListRow(), frames}), Texts()});
    layout->setContentsMargins({});
    setLayout(layout);
    On(EnableHighlight, &QCheckBox::clicked, this, [this] { EnableHighlight_Click(); });
    On(KeywordList, &QListWidget::currentRowChanged, this, [this](int row) { ShowWord(row); });
    // On the chosen one too: its style is shown again.
    On(KeywordList, &QListWidget::itemClicked, this, [this] { ShowWord(KeywordList->currentRow()); });
    EnableControls();
    FillList();
}

QLayout* KeywordPage::ListRow() {
    KeywordList = Named("KeywordList", new QListWidget);
    KeywordList->setAccessibleName("Keywords");
    KeywordList->setMinimumSize(InCharacters(20, 12));
    return Row(
        {KeywordList, Column({PushButton({"AddWord", "&Add"}, this, [this] { AddWord_Click(); }),
                              PushButton({"DelWord", "&Remove"}, this, [this] { DelWord_Click(); }),
                              PushButton({"Apply", "&Apply"}, this, [this] { Apply_Click(); }), Stretch()})});
}

QLayout* KeywordPage::ColorGrid() {
    constexpr int columns = 8;
    auto* grid = new QGridLayout;
    int index = 0;
    for (const PaletteColor& row : Palette) {
        auto* button = Named("Colors" + std::to_string(index), new QToolButton);
        button->setIcon(Patch(row.Color));
        button->setIconSize(InCharacters(3, 1));
        button->setToolTip(row.Name);
        button->setAccessibleName(row.Name);
        On(button, &QToolButton::clicked, this, [this, color = row.Color] { ChooseColor(color); });
        grid->addWidget(button, index / columns, index % columns);
        ++index;
    }
    Selected = Named("Selected", new QLabel);
    Selected->setFrameShape(QFrame::Panel);
    Selected->setFrameShadow(QFrame::Sunken);
    return Column({grid, Row({platform::qt::Label("Label1", "Current:"), Selected, Stretch()})});
}

QLayout* KeywordPage::AttributeBoxes() {
    Bold = CheckBox({"Bold", "Bold"});
    Italic = CheckBox({"Italic", "Italic"});
    Underline = CheckBox({"Underline", "Underline"});
    for (const QCheckBox* box : {Bold, Italic, Underline})
        On(box, &QCheckBox::clicked, this, [this] { ShowSample(); });
    return Row({Bold, Italic, Underline, Stretch()});
}

QLayout* KeywordPage::Texts() {
    txtSample = TextInStyle("txtSample");
    txtCurrent = TextInStyle("txtCurrent");
    return platform::qt::Fields(
        {{"Label2", "Sample Text", txtSample}, {"Label3", "Current Text", txtCurrent}});
}

void KeywordPage::FillList() {
    {
        const QSignalBlocker quiet(KeywordList);
        KeywordList->clear();
        for (const session::KeywordRec& word : edit_.Words)
            KeywordList->addItem(platform::qt::LineOf(word.Name));
    }
    if (edit_.Words.size() > 1) ShowWord(1);  // kept: the second, and the list selects none
}

void KeywordPage::ShowWord(int index) {
    const session::KeywordRec* word = edit_.At(index);
    if (word == nullptr) return;
    const QString name = platform::qt::Shown(word->Name);
    txtSample->setText("Sample " + name);
    txtCurrent->setText("Current " + name);
    Bold->setChecked(word->Bold);
    Italic->setChecked(word->Italic);
    Underline->setChecked(word->Underline);
    ChooseColor(word->Color);
    SetStyle(*txtCurrent, *word);
}

void KeywordPage::ChooseColor(std::int32_t color) {
    color_ = color;
    Selected->setPixmap(Patch(color));
    ShowSample();
}

session::KeywordRec KeywordPage::Sample() const {
    return {.Name = {},
            .Color = color_,
            .Bold = Bold->isChecked(),
            .Italic = Italic->isChecked(),
            .Underline = Underline->isChecked()};
}

void KeywordPage::ShowSample() { SetStyle(*txtSample, Sample()); }

void KeywordPage::AddWord_Click() {
    const auto answer = app_.Host.Boxes.InputBox("Enter the new keyword", "Add Keyword", "");
    const std::string word = base::Trim(answer.value_or(""));
    if (!edit_.MayAdd(word)) return app_.Host.Boxes.Say(operatorText);
    // Kept: the list gets a line and is not filled anew. A cancel repeats the last word there.
    if (const auto line = edit_.Add(word)) KeywordList->addItem(platform::qt::LineOf(*line));
}

void KeywordPage::DelWord_Click() {
    const session::KeywordRec* word = edit_.At(KeywordList->currentRow());
    if (word == nullptr) return;
    edit_.Remove(std::string(word->Name));
    FillList();
}

void KeywordPage::Apply_Click() {
    session::KeywordRec* word = edit_.At(KeywordList->currentRow());
    if (word == nullptr) return;
    session::KeywordRec styled = Sample();
    styled.Name = word->Name;
    *word = styled;
    SetStyle(*txtCurrent, styled);
}

void KeywordPage::Defaults() {
    edit_.Reset();
    FillList();
}

// Kept: at once, a cancel does not take it back.
void KeywordPage::EnableHighlight_Click() {
    app_.State.HighlightEnabled = EnableHighlight->isChecked();
    EnableControls();
}

void KeywordPage::EnableControls() {
    for (const char* name : {"KeywordList", "Label1", "Label2", "Label3", "txtCurrent", "txtSample",
                             "AddWord", "DelWord", "Apply", "Frame1", "Frame2"})
        findChild<QWidget*>(name)->setEnabled(EnableHighlight->isChecked());
}

}  // namespace editor
