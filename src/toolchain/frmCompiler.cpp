#include "toolchain/frmCompiler.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>

#include "base/Text.h"
#include "platform/qt/Guard.h"

namespace toolchain {

using platform::qt::CheckBox;
using platform::qt::Column;
using platform::qt::Columns;
using platform::qt::Item;
using platform::qt::Named;
using platform::qt::Row;
using platform::qt::Stretch;

frmCompiler::frmCompiler(session::App app, CompilerOptions& options, QWidget* owner)
    : Form("frmCompiler", "Compiler Options", owner), app_(app), options_(options) {
    SSTab1 = MakeTabs();
    LayOut({SSTab1, Buttons({{"OK", "OK", [this] { OK_Click(); }},
                             {"Cancel", "Cancel", [this] { Cancel_Click(); }},
                             {"cmdApply", "Apply", [this] { cmdApply_Click(); }}})});
    ParseCompilerFlags(app_.State.CompilerFlags, options_);
    ShowOptions();
}

QTabWidget* frmCompiler::MakeTabs() {
    auto* tabs = platform::qt::Tabs("SSTab1", {{"Output Files", OutputFiles()},
                                               {"Minimization", Minimizations()},
                                               {"Optimization", OptionPage(CompilerTab::Optimization)},
                                               {"General", OptionPage(CompilerTab::General)},
                                               {"Library", LibraryPage()},
                                               {"Device", DevicePage()}});
    tabs->setTabVisible(static_cast<int>(CompilerTab::Device), false);  // it is chosen in frmDevices
    return tabs;
}

std::vector<Item> frmCompiler::AddBoxes(CompilerTab tab, std::string_view frame) {
    std::vector<Item> boxes;
    for (const CompilerOption& option : CompilerOptionTable()) {
        if (option.Tab != tab || option.Frame != frame) continue;
        boxes_.push_back({option.Field, CheckBox({option.Control, option.Caption, option.Tip})});
        boxes.emplace_back(boxes_.back().Box);
    }
    return boxes;
}

QLayout* frmCompiler::OutputFiles() {
    std::vector<Item> frames;
    for (const session::OutputFrame& frame : OutputFrames()) {
        auto* boxes = Columns(AddBoxes(CompilerTab::OutputFiles, frame.Name), 5);
        frames.emplace_back(platform::qt::Frame(frame.Name, frame.Caption, boxes));
    }
    return Row({Column({frames.at(0), frames.at(1)}), frames.at(2)});
}

QLayout* frmCompiler::Minimizations() {
    optMinimization = RadioButtons(platform::qt::ControlArray("optMinimization", MinimizationCaptions), this);
    auto items = platform::qt::Items(optMinimization->buttons());
    items.emplace_back(Stretch());
    return Column(items);
}

QLayout* frmCompiler::OptionPage(CompilerTab tab) {
    const auto boxes = AddBoxes(tab, "");
    return Columns(boxes, static_cast<int>(boxes.size()));
}

QLayout* frmCompiler::LibraryPage() {
    Library = Named("Library", new QLineEdit);
    Library->setAccessibleName("Library");
    return Column(
        {Row({Library, Button({"ChooseLibrary", "Library", [this] { ChooseLibrary_Click(); }})}), Stretch()});
}

// Controls of a former way to choose the device: only chkDevInFile is ever set.
QLayout* frmCompiler::DevicePage() {
    chkDevInFile = CheckBox({"chkDevInFile", "Device in File"});
    return Column({Row({Named("txtMnemonic", new QLineEdit), Named("cboPackages", new QComboBox)}),
                   Row({Named("lstDevices", new QListWidget), Named("lstManufacturers", new QListWidget)}),
                   chkDevInFile});
}

void frmCompiler::ShowOptions() {
    for (const OptionBox& option : boxes_) platform::qt::SetValue(*option.Box, options_.*option.Field);
    // A digit above the last button shows none, and is kept until the user chooses one.
    if (auto* button = optMinimization->button(ShownMinimization(options_))) button->setChecked(true);
    Library->setText(QString::fromStdString(app_.State.LibraryName));
    chkDevInFile->setChecked(app_.State.DeviceName.size() < 2);
}

CompilerOptions frmCompiler::ControlValues() const {
    CompilerOptions values = options_;
    for (const OptionBox& option : boxes_) values.*option.Field = platform::qt::Value(*option.Box);
    if (optMinimization->checkedId() >= 0) {
        values.Minimization = static_cast<std::int16_t>(optMinimization->checkedId());
    }
    return values;
}

void frmCompiler::Apply(CompilerTab tab) { ReadCompilerTab(tab, ControlValues(), options_); }

void frmCompiler::OK_Click() {
    for (int tab = 0; tab < static_cast<int>(CompilerTab::Library); ++tab) Apply(CompilerTab{tab});
    app_.State.CompilerFlags = WriteCompilerFlags(options_);
    app_.State.LibraryName = base::Upper(Library->text().toStdString());
    accept();
}

void frmCompiler::cmdApply_Click() {
    const auto tab = static_cast<CompilerTab>(SSTab1->currentIndex());
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
    if (choice) Library->setText(QString::fromStdString(*choice));
}

bool frmCompiler::ShowCatalog() { return toolchain::ShowCatalog(app_); }

}  // namespace toolchain
