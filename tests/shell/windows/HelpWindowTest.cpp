#include <QTextBrowser>

#include "ShellFixture.h"
#include "platform/qt/MenuSet.h"
#include "shell/frmHelp.h"
#include "support/FormUser.h"

namespace {

// On an installation with the shipped help files.
class HelpWindow : public ShellFixture, protected doubles::FormUser {
  protected:
    using doubles::FormUser::Key;
    using doubles::FormUser::Type;

    HelpWindow() {
        const std::pair<const char*, const char*> installed[] = {{"Korvane.md", "Korvane/Korvane.HLP"},
                                                                 {"TeskRef.md", "Korvane/TeskRef.hlp"},
                                                                 {"Wavrik.md", "Wavrik/Wavrik.hlp"}};
        for (const auto& [source, target] : installed) {
            folder.Write(target, "");
            std::filesystem::copy_file(std::filesystem::path(HELP_FOLDER) / source, folder.Path() / target,
                                       std::filesystem::copy_options::overwrite_existing);
        }
    }

    // Its head is what is read.
    std::string Page() {
        return Control<QTextBrowser>("txtPage").toPlainText().section('\n', 0, 0).toStdString();
    }
    void UseHelp() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "frmHelp" && window->isVisible()) return Use(*window);
        throw std::runtime_error("no help is shown");
    }
};

}  // namespace

TEST_F(HelpWindow, F1ShowsTheTopicBesideTheDialogAndGoesNoFurther) {
    Start();
    Drive([&] { shell->Main().RunCommand("mnuCompiler"); },
          {{"frmCompiler", "OK", [&] {
                Key(Qt::Key_F1);
                UseHelp();
                EXPECT_EQ(Page(), "Compiler");
                Key(Qt::Key_Escape);  // is for the help alone
                EXPECT_THROW(UseHelp(), std::runtime_error);
                Use(*QApplication::activeModalWidget());
                Key(Qt::Key_Escape);
            }}});
    QTest::keyClick(&TextOf(NewText()), Qt::Key_F1);  // a text has no topic
    EXPECT_THROW(UseHelp(), std::runtime_error);
    EXPECT_EQ(desktop.Boxes.LastText(), "");
}

TEST_F(HelpWindow, IsReadByContentsByWordsAndByLinks) {
    Start();
    shell->Main().RunCommand("mnuHelpSearch");
    UseHelp();
    EXPECT_EQ(Page(), "User guide");
    Type("wheel zooms");
    EXPECT_EQ(Text("lstPages"), "Waves|");
    Key(Qt::Key_Return);
    EXPECT_EQ(Page(), "Waves");
    emit Control<QTextBrowser>("txtPage").anchorClicked(QUrl("TeskRef.md#8-tables"));
    EXPECT_EQ(Page(), "8. Tables");
    Click("Back");
    EXPECT_EQ(Page(), "Waves");
    shell->Main().RunCommand("mnuHelpTesk");
    EXPECT_EQ(Page(), "Tesk: language and tool chain");
    EXPECT_NE(Text("lstPages").find("*Tesk: language and tool chain|  1. Running|"), std::string::npos)
        << Text("lstPages");
    Click("Close");
    shell->Main().RunCommand("mnuHelpFitters");
    EXPECT_EQ(desktop.Boxes.LastText(),
              "The help file " + folder.Logic("Korvane\\Fitters.hlp") + " is missing.");
    state.HelpFile.clear();
    shell->Main().RunCommand("mnuHelpContents");
    EXPECT_EQ(desktop.Boxes.LastText(),
              "Unable to display Help Contents. There is no Help associated with this project.");
    EXPECT_THROW(UseHelp(), std::runtime_error);
}

TEST_F(HelpWindow, ShowsItsCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<shell::frmHelp>(shell::HelpLibrary()), "");
}

TEST_F(HelpWindow, ListsTheChipMakersFilesInBothMenus) {
    for (const char* name : {"A&B.PDF", "NEWS.TXT", "x.htm"})
        folder.Write(std::string("Korvane/OvrelHlp/") + name, "");
    Start();
    editor::frmDocument& document = NewText();
    const auto names = files.List(state.OvrelHelpDir + "*.*");
    ASSERT_EQ(names.size(), 3u);
    for (const platform::qt::MenuSet* menus : {&std::as_const(shell->Main().Menus()), document.Menus()}) {
        for (int i = 0; i < 3; ++i) {
            const std::string element = platform::qt::MenuSet::ElementName("mnuHelpOvrelList", i);
            const std::string& name = names[static_cast<std::size_t>(i)];
            EXPECT_EQ(menus->Text(element), name);
            menus->Entry(element).trigger();
            EXPECT_EQ(desktop.Programs.Started.back(), "open|" + state.OvrelHelpDir + name + "|0|0");
        }
        EXPECT_EQ(menus->Menu("mnuHelpOvrel")->actions().size(), 3);
    }
}
