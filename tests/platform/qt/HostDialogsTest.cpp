#include "platform/qt/HostDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include "base/Text.h"
#include "platform/qt/HostClipboard.h"
#include "platform/qt/HostFileDialog.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"

namespace platform::qt {
namespace {

// Plays the user: each step gets the modal dialog of its name, once that is open.
class User {
  public:
    using Step = std::function<void(QDialog&)>;
    void Then(const char* dialog, Step step) { steps_.push_back({dialog, std::move(step)}); }
    bool IsDone() const { return steps_.empty(); }

    User() { Watch(); }

  private:
    // A timer of its own for each look: a dialog may open another within a step.
    void Watch() {
        QTimer::singleShot(10, &context_, [this] {
            Watch();
            Act();
        });
    }
    void Act() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible() || dialog == current_) return;
        if (steps_.empty() || dialog->objectName() != steps_.front().first) {
            ADD_FAILURE() << "unexpected " << dialog->objectName().toStdString();
            dialog->reject();
            return;
        }
        const Step step = steps_.front().second;
        steps_.pop_front();
        QDialog* const before = std::exchange(current_, dialog);
        step(*dialog);
        current_ = before;
    }

    std::deque<std::pair<QString, Step>> steps_;
    QDialog* current_ = nullptr;  // of the step under way
    QObject context_;
};

void PressButton(QDialog& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
}

// Types a name into a file dialog and presses Return.
User::Step Type(const std::string& name) {
    return [name](QDialog& dialog) {
        auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        edit->setText(QString::fromStdString(name));
        QTest::keyClick(edit, Qt::Key_Return);
    };
}

User::Step Press(QDialogButtonBox::StandardButton button) {
    return [button](QDialog& dialog) { PressButton(dialog, button); };
}

class HostDialogsTest : public testing::Test {
  protected:
    HostDialogsTest() { ::setenv("XDG_CONFIG_HOME", (folder_.Path() / "config").c_str(), 1); }
    ~HostDialogsTest() override {
        EXPECT_TRUE(user_.IsDone());
        ::unsetenv("XDG_CONFIG_HOME");
    }
    FileDialogRequest Request(int flags = 0) {
        return {.Filter = "PLD Files (*.pld)|*.pld|All Files (*.*)*.*",
                .InitialFolder = folder_.Logic("Work"),
                .Flags = flags};
    }

    doubles::TemporaryFolder folder_;
    HostFileSystem files_;
    HostDialogs boxes_{files_};
    User user_;
};

TEST_F(HostDialogsTest, MessageBoxesAnswerByButtonAndByEscape) {
    const struct {
        Buttons Choice;
        QDialogButtonBox::StandardButton Button;
        Answer Pressed;
        Answer Escaped;
    } rows[] = {
        {Buttons::Ok, QDialogButtonBox::Ok, Answer::Ok, Answer::Ok},
        {Buttons::OkCancel, QDialogButtonBox::Ok, Answer::Ok, Answer::Cancel},
        {Buttons::YesNo, QDialogButtonBox::Yes, Answer::Yes, Answer::No},
        {Buttons::YesNoCancel, QDialogButtonBox::No, Answer::No, Answer::Cancel},
    };
    for (const auto& row : rows) {
        user_.Then("MessageBox", Press(row.Button));
        EXPECT_EQ(boxes_.MessageBox({.Text = "t", .Choice = row.Choice}), row.Pressed);
        user_.Then("MessageBox", [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        EXPECT_EQ(boxes_.MessageBox({.Text = "t", .Choice = row.Choice}), row.Escaped);
    }
}

TEST_F(HostDialogsTest, MessagesArePlainTextOfBoundedSize) {
    user_.Then("MessageBox", [](QDialog& dialog) {
        auto* label = dialog.findChild<QLabel*>("Text");
        EXPECT_EQ(label->text(), QString("<b>a</b>\nb\u00E4\uFFFD"));
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(dialog.windowTitle(), "Korvane");
        PressButton(dialog, QDialogButtonBox::Ok);
    });
    boxes_.Say("<b>a</b>\r\nb\xC3\xA4\xFF");
    for (const std::string& text :
         {base::ReplaceAll(std::string(5000, 'x'), "x", "line\r\n"), std::string(200000, 'x')}) {
        user_.Then("MessageBox", [](QDialog& dialog) {
            EXPECT_LT(dialog.height(), 700);
            EXPECT_LT(dialog.width(), 1100);
            EXPECT_TRUE(dialog.findChild<QPushButton*>()->isVisible());
            PressButton(dialog, QDialogButtonBox::Ok);
        });
        boxes_.Say(text);
    }
}

TEST_F(HostDialogsTest, ABoxShowsItsTitleAndItsTextInWhole) {
    const std::string path = "C:" + base::ReplaceAll(std::string(12, 'x'), "x", "\\A_LONG_FOLDER");
    const MessageBoxRequest requests[] = {
        {.Text = "t", .Title = "Initialization Error - Application Ending", .Picture = Icon::Stop},
        {.Text = "The file " + path + " doesn't exist. New File assumed"},
        {.Text = base::ReplaceAll(std::string(30, 'x'), "x", "some words ") + "\n\nLast line."},
        {.Text = std::string(300, 'x'), .Choice = Buttons::YesNoCancel, .Picture = Icon::Question},
    };
    for (const MessageBoxRequest& request : requests) {
        user_.Then("MessageBox", [](QDialog& dialog) {
            QFont font;
            font.setBold(true);
            EXPECT_GT(dialog.width(), QFontMetrics(font).horizontalAdvance(dialog.windowTitle()) + 100);
            const auto& label = *dialog.findChild<QLabel*>("Text");
            EXPECT_GE(label.height(), label.heightForWidth(label.width()));
            EXPECT_GE(label.width(), label.minimumSizeHint().width());
            EXPECT_TRUE(dialog.rect().contains(label.geometry()));
            EXPECT_LT(dialog.width(), 640);
            dialog.reject();
        });
        boxes_.MessageBox(request);
    }
}

TEST_F(HostDialogsTest, ABoxBelongsToWhateverIsShown) {
    QWidget splash(nullptr, Qt::SplashScreen);
    splash.setAttribute(Qt::WA_ShowWithoutActivating);
    QMainWindow main;
    for (QWidget* shown : {&splash, static_cast<QWidget*>(&main)}) {
        shown->show();
        QApplication::setActiveWindow(nullptr);
        user_.Then("MessageBox", [&](QDialog& dialog) {
            EXPECT_EQ(dialog.parentWidget(), shown);
            dialog.reject();
        });
        boxes_.Say("t");
        shown->hide();
    }
}

TEST_F(HostDialogsTest, ABoxThatGoesWithItsWindowCountsAsClosed) {
    auto* window = new QWidget;
    window->show();
    HostDialogs boxes(files_, [&] { return window; });
    user_.Then("MessageBox", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), window);
        delete window;
    });
    EXPECT_EQ(boxes.MessageBox({.Text = "t", .Choice = Buttons::OkCancel}), Answer::Cancel);
}

TEST_F(HostDialogsTest, InputBoxGivesTheTextOrNothing) {
    user_.Then("InputBox", [](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(), "<i>prompt R&&D");
        EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "preset");
        EXPECT_EQ(dialog.windowTitle(), "Title");
        dialog.findChild<QLineEdit*>()->clear();
        PressButton(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(boxes_.InputBox("<i>prompt R&D", "Title", "preset"), "");
    user_.Then("InputBox", Press(QDialogButtonBox::Cancel));
    EXPECT_EQ(boxes_.InputBox("prompt", "", ""), std::nullopt);
}

TEST_F(HostDialogsTest, OpenTakesANameThatDoesNotExistUnlessItMust) {
    folder_.Write("Work/COUNT8.PLD", "");
    folder_.Write("Work/Sub/a.si", "");
    user_.Then("FileDialog", Type("new.pld"));
    EXPECT_EQ(boxes_.OpenFile(Request()), folder_.Logic("Work\\new.pld"));
    user_.Then("FileDialog", Type("no/new.pld"));
    EXPECT_EQ(boxes_.OpenFile(Request()), folder_.Logic("Work\\no\\new.pld"));
    user_.Then("FileDialog", Type(folder_.Logic("WORK\\SUB\\A.SI")));
    EXPECT_EQ(boxes_.OpenFile(Request(FileMustExist)), folder_.Logic("Work\\Sub\\a.si"));

    for (const char* name : {"new.pld", "no/new.pld", "*.pld"}) {
        user_.Then("FileDialog", Type(name));
        user_.Then("MessageBox", Press(QDialogButtonBox::Ok));
    }
    user_.Then("FileDialog", Type("count8.pld"));
    EXPECT_EQ(boxes_.OpenFile(Request(FileMustExist)), folder_.Logic("Work\\count8.pld"));

    user_.Then("FileDialog", Type("no/new.pld"));
    user_.Then("MessageBox", Press(QDialogButtonBox::Ok));
    user_.Then("FileDialog", Type("Sub"));  // goes there
    auto request = Request(PathMustExist);
    request.DefaultExtension = "si";
    user_.Then("FileDialog", Type("b"));
    EXPECT_EQ(boxes_.OpenFile(request), folder_.Logic("Work\\Sub\\b.si"));
    user_.Then("FileDialog", [](QDialog& dialog) {
        auto* list = dialog.findChild<QListView*>("listView");
        EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 2; }, 5000));
        list->setFocus();
        list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
        PressButton(dialog, QDialogButtonBox::Open);
    });
    user_.Then("FileDialog", Type("e.pld"));
    EXPECT_EQ(boxes_.OpenFile(Request()), folder_.Logic("Work\\Sub\\e.pld"));
    user_.Then("FileDialog", Type("~/f.pld"));
    EXPECT_EQ(boxes_.OpenFile(Request()), files_.FromHostPath(QDir::homePath().toStdString() + "/f.pld"));
    folder_.Write("Work/README", "");
    for (const auto& [typed, taken] : {std::pair{"readme", "readme"}, {"c.", "c."}, {"d.pld", "d.pld"}}) {
        user_.Then("FileDialog", Type(typed));
        EXPECT_EQ(boxes_.OpenFile(request), folder_.Logic(std::string("Work\\") + taken));
    }
    request.DefaultExtension = ".DL";
    user_.Then("FileDialog", Type("full"));
    EXPECT_EQ(boxes_.OpenFile(request), folder_.Logic("Work\\full.DL"));
    user_.Then("FileDialog", Press(QDialogButtonBox::Cancel));
    EXPECT_EQ(boxes_.OpenFile(Request()), std::nullopt);
}

// A file of that name lies in the folder shown, too.
TEST_F(HostDialogsTest, OnlyAHandInTheListWritesOverATypedPath) {
    folder_.Write("Work/COUNT8.PLD", "");
    folder_.Write("My work/COUNT8.PLD", "");
    const std::string path = (folder_.Path() / "My work/COUNT8.PLD").string();
    const auto typeWhole = [&](QDialog& dialog) {
        auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        QTest::keyClicks(edit, QString::fromStdString(path.substr(0, path.size() - 1)));
        edit->clearFocus();
        QTest::keyClick(edit, path.back());
        edit->setFocus();
    };
    user_.Then("FileDialog", [&](QDialog& dialog) {
        typeWhole(dialog);
        QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    EXPECT_EQ(boxes_.OpenFile(Request()), folder_.Logic("My work\\COUNT8.PLD"));
    user_.Then("FileDialog", [&](QDialog& dialog) {
        typeWhole(dialog);
        auto* list = dialog.findChild<QTreeView*>("treeView");
        EXPECT_TRUE(list->isVisible());
        EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 1; }, 5000));
        const auto first = list->visualRect(list->model()->index(0, 0, list->rootIndex()));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first.center());
        PressButton(dialog, QDialogButtonBox::Open);
    });
    EXPECT_EQ(boxes_.OpenFile(Request()), folder_.Logic("Work\\COUNT8.PLD"));
}

TEST_F(HostDialogsTest, SaveAsksBeforeItReplacesAFileOfAnyCase) {
    folder_.Write("Work/COUNT8.PLD", "");
    auto request = Request(OverwritePrompt | PathMustExist);
    request.FileName = folder_.Logic("Work\\count8.pld");
    request.InitialFolder = folder_.Logic();
    user_.Then("FileDialog", Press(QDialogButtonBox::Save));
    user_.Then("MessageBox", Press(QDialogButtonBox::No));
    user_.Then("FileDialog", Press(QDialogButtonBox::Save));
    user_.Then("MessageBox", Press(QDialogButtonBox::Yes));
    EXPECT_EQ(boxes_.SaveFile(request), folder_.Logic("Work\\count8.pld"));
    request.Flags = 0;
    user_.Then("FileDialog", Press(QDialogButtonBox::Save));
    EXPECT_EQ(boxes_.SaveFile(request), folder_.Logic("Work\\count8.pld"));
}

TEST_F(HostDialogsTest, FiltersMatchNamesInAnyCase) {
    EXPECT_EQ(NameFilters("PLD Files (*.pld)|*.pld|Net|*.edf; *.edn|All Files (*.*)*.*"),
              (QStringList{"PLD Files (*.pld) (*.pld)", "Net (*.edf *.edn)", "All Files (*.*)*.* (*)"}));
    EXPECT_EQ(NameFilters("All|*.*"), QStringList{"All (*)"});
    for (const char* name : {"A.PLD", "b.pld", "c.si"}) folder_.Write(std::string("Work/") + name, "");
    user_.Then("FileDialog", [](QDialog& dialog) {
        auto* list = dialog.findChild<QListView*>("listView");
        const auto rows = [&] { return list->model()->rowCount(list->rootIndex()); };
        EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 2; }, 5000)) << rows();
        static_cast<QFileDialog&>(dialog).selectNameFilter("All Files (*.*)*.* (*)");
        EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 3; }, 5000)) << rows();
        dialog.reject();
    });
    EXPECT_EQ(boxes_.OpenFile(Request()), std::nullopt);
}

TEST_F(HostDialogsTest, FontsAndColorsComeBack) {
    const FontChoice preset{"Courier New", 11, true, false, true, 0x332211};
    user_.Then("FontDialog", [](QDialog& dialog) { dialog.findChild<QPushButton*>("Color")->click(); });
    user_.Then("ColorDialog", [](QDialog& dialog) {
        EXPECT_EQ(static_cast<QColorDialog&>(dialog).currentColor(), QColor(0x11, 0x22, 0x33));
        static_cast<QColorDialog&>(dialog).setCurrentColor(QColor(1, 2, 3));
        PressButton(dialog, QDialogButtonBox::Ok);
    });
    user_.Then("FontDialog", Press(QDialogButtonBox::Ok));
    const auto font = boxes_.ChooseFont(preset);
    ASSERT_TRUE(font);
    EXPECT_EQ(font->Color, 0x030201);
    EXPECT_EQ(font->Size, 11);
    EXPECT_TRUE(font->Underline);
    user_.Then("FontDialog", Press(QDialogButtonBox::Cancel));
    EXPECT_FALSE(boxes_.ChooseFont(preset));
}

TEST(HostClipboardTest, KeepsLineEndsAndBytes) {
    HostClipboard clipboard;
    for (const std::string& text : {std::string("a\r\nb\nc\xC3\xA4"), std::string("\xE4\r\n")}) {
        clipboard.SetText(text);
        EXPECT_TRUE(clipboard.HasText());
        EXPECT_EQ(clipboard.Text(), text);
    }
}

}  // namespace
}  // namespace platform::qt
