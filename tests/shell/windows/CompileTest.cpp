#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "ShellFixture.h"
#include "platform/qt/ToolHost.h"
#include "toolchain/frmErrorMessage.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmStatus.h"

// One whole way on the bundled tool chain in its own process: open, edit, compile, read a message.

namespace {

class CompileTest : public ShellFixture {
  protected:
    void SetUp() override {
        namespace fs = std::filesystem;
        fs::remove_all(folder.Path() / "Shared");
        fs::copy(fs::path(STAGE_DIR) / "Shared", folder.Path() / "Shared");
        fs::copy_file(fs::path(DATA_DIR) / "TeskErr.txt", folder.Path() / "Korvane/TeskErr.txt",
                      fs::copy_options::overwrite_existing);
        fs::copy_file(fs::path(DATA_DIR) / "Examples/COUNT8.PLD", folder.Path() / "COUNT8.PLD");
        Start();
    }
    void TearDown() override { shell.reset(); }  // before the tools that it talks to
    // What the windows of the run showed when the user pressed OK.
    void Compile(editor::frmDocument& document) {
        int tries = 0;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                auto* status = qobject_cast<toolchain::frmStatus*>(window);
                if (status == nullptr || !status->findChild<QPushButton*>("OK")->isEnabled()) continue;
                Errors = status->findChild<QLabel*>("lblErrors")->text();
                Warnings = status->findChild<QLabel*>("lblWarnings")->text();
                QTest::mouseClick(status->findChild<QPushButton*>("OK"), Qt::LeftButton);
                user.stop();
            }
            ASSERT_LT(++tries, 600);
        });
        user.start(50);
        document.RunCommand("mnuRunDepCompile");
    }
    QAbstractItemModel& Lines() { return *Messages().findChild<QAbstractItemView*>("lstMessages")->model(); }
    // The texts of the explanation that a click on the line opens.
    QString Explain(int row) {
        auto& list = *Messages().findChild<QAbstractItemView*>("lstMessages");
        QString text;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->windowTitle() != "Compile Message" || !window->isVisible()) continue;
                text = window->findChild<QLineEdit*>("txtCode")->text();
                user.stop();
                QTest::mouseClick(window->findChild<QPushButton*>("OK"), Qt::LeftButton);
            }
        });
        user.start(10);
        list.scrollTo(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(row, 0)).center());
        return text;
    }

    platform::qt::ToolHost tools{desktop.Time, platform::PathMap(), TOOLHOST};
    platform::Host real{files, desktop.Settings, desktop.Boxes, clipboard,     desktop.Programs,
                        tools, desktop.Desk,     desktop.Time,  desktop.Screen};
    QString Errors;
    QString Warnings;

    void Start() {
        shell = std::make_unique<shell::Shell>(state, real, folder.Logic("state") + "\\");
        ASSERT_TRUE(shell->Start());
        ASSERT_TRUE(desktop.Boxes.Shown.empty()) << desktop.Boxes.LastText();
    }
};

}  // namespace

TEST_F(CompileTest, AGoodDesignLeavesItsFiles) {
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("COUNT8.PLD"));
    Compile(*ActiveDocument());
    EXPECT_EQ(Errors, "0");
    for (const char* extension : {"LST", "DOC", "ABS", "PLA"}) {
        EXPECT_FALSE(folder.Read(std::string("COUNT8.") + extension).empty()) << extension;
    }
}

TEST_F(CompileTest, AnErrorIsCountedListedAndExplained) {
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("COUNT8.PLD"));
    editor::frmDocument& document = *ActiveDocument();
    Key(document, Qt::Key_End, Qt::ControlModifier);
    Key(document, Qt::Key_Return);
    Type(document, "NOWHERE = ( Q0 & ;");
    Key(document, Qt::Key_Return);
    desktop.Boxes.Answers = {platform::Answer::Yes};
    Compile(document);
    EXPECT_EQ(desktop.Boxes.Shown.front().Text, "File is not saved. Do you want to save now?");
    EXPECT_GE(Errors.toInt(), 1);
    int row = 0;
    const auto line = [&] { return Lines().index(row, 0).data().toString(); };
    while (row < Lines().rowCount() && !line().contains("rror")) ++row;
    ASSERT_LT(row, Lines().rowCount());
    const QString code = Explain(row);
    EXPECT_EQ(code, line().mid(1, 6));
    EXPECT_TRUE(files.FileExists(folder.Logic("COUNT8.PLD")));
}
