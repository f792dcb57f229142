#include "editor/frmKorvane.h"

#include <QComboBox>
#include <QLineEdit>
#include <algorithm>

#include "base/Text.h"
#include "editor/frmSelectDirectory.h"
#include "editor/windows/KeywordPage.h"
#include "editor/windows/ToolsPage.h"
#include "platform/qt/Captions.h"

namespace editor {
namespace {

using platform::qt::CheckBox;
using platform::qt::Column;
using platform::qt::Frame;
using platform::qt::Label;
using platform::qt::Named;
using platform::qt::Row;
using platform::qt::Stretch;

void Describe(QLineEdit& box, const session::FontRecord& font) {
    box.setText(platform::qt::Shown(FontDescription(font)));
    platform::qt::ShowOnPaper(box, font.ForeColor);
}

}  // namespace

frmKorvane::frmKorvane(session::App& app, QWidget* owner)
    : Form("frmKorvane", "KORVANE Settings", owner), app_(app) {
    options_.EditorFont = app.State.EditorFont;
    options_.MessageFont = app.State.MessageFont;
    options_.ProjectFont = app.State.ProjectFont;
    tools_ = new ToolsPage(app);
    keywords_ = new KeywordPage(app);
    LayOut({platform::qt::Tabs("SSTab1", {{"General", General()},
                                          {"Tools", Column({tools_})},
                                          {"Syntax", Column({keywords_})},
                                          {"Fonts", Fonts()}}),
            Buttons({{"OK", "OK", [this] { OK_Click(); }},
                     {"Cancel", "Cancel", [this] { Cancel_Click(); }},
                     {"Defaults", "&Defaults", [this] { keywords_->Defaults(); }}})});
}

QLayout* frmKorvane::General() {
    const session::Session& state = app_.State;
    txtWorking = Named("txtWorking", new QLineEdit(platform::qt::Shown(state.WorkDir)));
    Schematic = Named("Schematic", new QComboBox);
    for (const session::SchematicTool& tool : state.SchematicTools)
        Schematic->addItem(platform::qt::LineOf(tool.Name));
    Schematic->setCurrentIndex(std::max(0, Schematic->findText(platform::qt::LineOf(state.SchematicTool))));
    AutoArrange = CheckBox({"AutoArrange", "Auto arrange windows on main window resize"});
    AutoArrange->setChecked(state.AutoArrange);
    MacroSymTable = CheckBox({"MacroSymTable", "Always update symbols when adding macro"});
    MacroSymTable->setChecked(state.AutoSymbolUpdate);
    auto* folder = Row({Label("Label4", "Working Directory:", txtWorking), txtWorking,
                        Button({"Browse", "&Browse...", [this] { Browse_Click(); }})});
    auto* package = Row({Label("Label5", "Schematic:", Schematic), Schematic, Stretch()});
    return Column({Frame("Frame4", "Specify default working directory", folder),
                   Frame("Frame5", "Specify schematic capture program being used", package), AutoArrange,
                   MacroSymTable, Stretch()});
}

QLayout* frmKorvane::Fonts() {
    return Column({FontFrame("Editor Windows", "EFontDesc", "ChooseEFont", options_.EditorFont),
                   FontFrame("Message Window", "MFontDesc", "ChooseMFont", options_.MessageFont),
                   FontFrame("Project Window", "PFontDesc", "ChoosePFont", options_.ProjectFont), Stretch()});
}

QGroupBox* frmKorvane::FontFrame(const char* caption, const char* description, const char* button,
                                 session::FontRecord& font) {
    auto* text = Named(description, new QLineEdit);
    text->setReadOnly(true);
    text->setAccessibleName(caption);
    Describe(*text, font);
    auto* choose = Button({button, "Font:", [this, text, &font] {
                               if (ChooseFont(app_.Host.Boxes, font)) Describe(*text, font);
                           }});
    return Frame(std::string(description) + "Frame", caption, Row({choose, text}));
}

void frmKorvane::Browse_Click() {
    const std::string drive = base::Left(txtWorking->text().toStdString(), 2);
    platform::qt::Modal dialog(new frmSelectDirectory(app_.Host.Files, drive, this));
    if (dialog.Run()) txtWorking->setText(platform::qt::Shown(dialog->SelectedPath));
}

void frmKorvane::OK_Click() {
    options_.WorkDir = txtWorking->text().toStdString();
    options_.SchematicTool = Schematic->currentText().toStdString();
    options_.AutoArrange = AutoArrange->isChecked();
    options_.AutoSymbolUpdate = MacroSymTable->isChecked();
    options_.Keywords = keywords_->Keywords();
    tools_->Read(options_);
    if (ApplyOptions(app_, options_)) accept();
}

}  // namespace editor
