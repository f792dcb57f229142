#include "editor/windows/ToolsPage.h"

#include <QListWidget>

#include "editor/frmUtility.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace editor {
namespace {

using platform::qt::CheckBox;
using platform::qt::Column;
using platform::qt::Named;
using platform::qt::On;
using platform::qt::PushButton;
using platform::qt::Row;
using platform::qt::Stretch;

// In the order of StdUtils.
constexpr struct {
    const char* LabelName;
    const char* Caption;
    const char* MenuBox;
    const char* ToolbarBox;
} standardTools[] = {
    {"Label6", "Calculator", "MenuCalculator", "TBCalculator"},
    {"Label7", "Explorer", "MenuExplorer", "TBExplorer"},
    {"Label8", "DOS Prompt", "MenuDOS", "TBDOS"},
    {"Label11", "Stavrik", "MenuSM", "TBSM"},
    {"Label10", "Schematic", "MenuSchematic", "TBSchematic"},
    {"Label9", "Wavrik", "MenuWF", "TBWF"},
    {"Label12", "Programmer", "MenuProg", "TBProg"},
};

QCheckBox* PlaceBox(const char* name, const char* caption, const std::string& tool) {
    QCheckBox* box = CheckBox({name, caption});
    box->setAccessibleName(QString::fromStdString(tool + ": " + caption));
    return box;
}

}  // namespace

ToolsPage::ToolsPage(session::App& app) : app_(app), tools_(app.State.CustUtils) {
    auto* layout = Row({Column({StandardTools(), Stretch()}), CustomFrame()});
    layout->setContentsMargins({});
    setLayout(layout);
    FillList(0);
    On(lstCustom, &QListWidget::currentRowChanged, this, [this] { ShowFlags(); });
    On(MenuCustom, &QCheckBox::clicked, this, [this](bool on) { Chosen()->Menu = on; });
    On(TBCustom, &QCheckBox::clicked, this, [this](bool on) { Chosen()->Toolbar = on; });
}

QLayout* ToolsPage::StandardTools() {
    auto* grid = new QGridLayout;
    int index = 0;
    for (const auto& row : standardTools) {
        const auto place = static_cast<std::size_t>(index);
        const Boxes boxes{PlaceBox(row.MenuBox, "Menu", row.Caption),
                          PlaceBox(row.ToolbarBox, "Toolbar", row.Caption)};
        boxes.Menu->setChecked(app_.State.StdUtils[place].Menu);
        boxes.Toolbar->setChecked(app_.State.StdUtils[place].Toolbar);
        grid->addWidget(platform::qt::Label(row.LabelName, row.Caption), index, 0);
        grid->addWidget(boxes.Menu, index, 1);
        grid->addWidget(boxes.Toolbar, index, 2);
        standard_[place] = boxes;
        ++index;
    }
    return grid;
}

QGroupBox* ToolsPage::CustomFrame() {
    lstCustom = Named("lstCustom", new QListWidget);
    lstCustom->setAccessibleName("Custom tools");
    lstCustom->setMinimumSize(platform::qt::InCharacters(24, 8));
    Edit = PushButton({"Edit", "&Edit Tool"}, this, [this] { Edit_Click(); });
    Remove = PushButton({"Remove", "&Remove"}, this, [this] { Remove_Click(); });
    MenuCustom = PlaceBox("MenuCustom", "Menu", "Custom tool");
    TBCustom = PlaceBox("TBCustom", "Toolbar", "Custom tool");
    auto* buttons = Column({PushButton({"Add", "&Add Tool"}, this, [this] { Add_Click(); }), Edit, Remove,
                            PushButton({"Macro", "&Macro"}, this, [this] { Macro_Click(); }), Stretch()});
    return platform::qt::Frame("Frame3", "Customize",
                               Column({Row({lstCustom, buttons}), Row({MenuCustom, TBCustom, Stretch()})}));
}

// Shows the tools anew with this line chosen, if it is there.
void ToolsPage::FillList(int line) {
    {
        const QSignalBlocker quiet(lstCustom);
        lstCustom->clear();
        for (const session::CustomUtility* tool : tools_.Lines())
            lstCustom->addItem(platform::qt::LineOf(tool->Name));
        lstCustom->setCurrentRow(line);
    }
    ShowFlags();
}

session::CustomUtility* ToolsPage::Chosen() {
    const auto lines = tools_.Lines();
    const auto line = static_cast<std::size_t>(lstCustom->currentRow());
    return line < lines.size() ? lines[line] : nullptr;
}

void ToolsPage::ShowFlags() {
    const session::CustomUtility* tool = Chosen();
    for (QWidget* control : std::initializer_list<QWidget*>{Remove, MenuCustom, TBCustom})
        control->setEnabled(tool != nullptr);
    Edit->setEnabled(tool != nullptr && !session::IsMacro(*tool));
    MenuCustom->setChecked(tool != nullptr && tool->Menu);
    TBCustom->setChecked(tool != nullptr && tool->Toolbar);
}

void ToolsPage::SayFull() {
    app_.Host.Boxes.Say("You can have a maximum of " + std::to_string(tools_.Tools().size()) +
                        " custom utilities.");
}

void ToolsPage::Add_Click() {
    if (tools_.IsFull()) return SayFull();
    platform::qt::Modal dialog(new frmUtility(app_.Host.Boxes, "", "", window()));
    if (dialog.Run()) tools_.Add(dialog->ProgramPath, dialog->ToolName);
    FillList(0);
}

void ToolsPage::Edit_Click() {
    session::CustomUtility& tool = *Chosen();
    platform::qt::Modal dialog(new frmUtility(app_.Host.Boxes, tool.Program, tool.Name, window()));
    if (!dialog.Run()) return;
    tool.Program = dialog->ProgramPath;
    tool.Name = dialog->ToolName;
    FillList(lstCustom->currentRow());
}

void ToolsPage::Macro_Click() {
    if (const auto line = tools_.AddMacro()) return FillList(*line);
    SayFull();
}

void ToolsPage::Remove_Click() {
    const int line = lstCustom->currentRow();
    tools_.Remove(line);
    FillList(0);
}

void ToolsPage::Read(Options& options) const {
    for (std::size_t i = 0; i < standard_.size(); ++i) {
        options.StdUtils[i].Menu = standard_[i].Menu->isChecked();
        options.StdUtils[i].Toolbar = standard_[i].Toolbar->isChecked();
    }
    options.CustUtils = tools_.Tools();
}

}  // namespace editor
