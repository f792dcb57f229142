#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "base/RunTimeError.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmStatus.h"

namespace toolchain {
namespace {

class MessageWindow : public testing::Test {
  protected:
    MessageWindow() {
        Codes.ErrorTable = {{"0012ta", "Error", "bad symbol", "A name\nis wrong", "Check it"}};
        Window = new frmMessage(App, Codes);
        Frame = Area.addSubWindow(Window);
        Frame->resize(400, 200);
        Area.resize(600, 400);
        Area.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&Area));
        List = Window->findChild<QListView*>("lstMessages");
    }
    void Send(std::uint32_t number, const std::string& text) {
        Host.Libraries.Send(Window->Handle(), {.Number = number, .First = "", .Second = text});
    }
    std::string Shown(int row) { return List->model()->index(row, 0).data().toString().toStdString(); }
    void Click(int row) {
        const QRect place = List->visualRect(List->model()->index(row, 0));
        QTest::mouseClick(List->viewport(), Qt::LeftButton, {}, place.center());
    }
    // What frmErrorMessage shows after `action`, field by field; empty if it does not open.
    std::string Opened(const std::function<void()>& action) {
        std::string seen;
        QTimer::singleShot(0, [&] {
            QWidget* form = QApplication::activeModalWidget();
            if (form == nullptr) return;
            seen = form->windowTitle().toStdString();
            for (const char* name : {"txtCode", "txtLevel"}) {
                seen += "|" + form->findChild<QLineEdit*>(name)->text().toStdString();
            }
            for (const char* name : {"txtMessage", "txtDescription", "txtInfo"}) {
                seen += "|" + form->findChild<QPlainTextEdit*>(name)->toPlainText().toStdString();
            }
            QTest::keyClick(form->findChild<QPlainTextEdit*>("txtInfo"), Qt::Key_F1);
            QTest::mouseClick(form->findChild<QPushButton*>("OK"), Qt::LeftButton);
        });
        action();
        QApplication::processEvents();
        return seen;
    }

    doubles::MemoryFiles Files;
    doubles::Desktop Host{Files};
    session::Session State;
    doubles::Hall Hall;
    session::App App{State, Host.Host, Hall};
    ErrorCodes Codes;
    QMdiArea Area;
    frmMessage* Window;
    QMdiSubWindow* Frame;
    QListView* List;
};

TEST_F(MessageWindow, KeepsTheLinesThatALibraryAddsUntilItClearsThem) {
    Send(384, "[0012ta] x");
    Send(101, "dropped");
    Send(384, "\xFF two\r\nlines\t.");
    EXPECT_EQ(List->model()->rowCount(), 2);
    EXPECT_EQ(Shown(1), "\xEF\xBF\xBD two  lines .");
    Frame->close();
    EXPECT_FALSE(Frame->isVisible());
    Send(384, "hidden");
    Frame->show();
    EXPECT_EQ(List->model()->rowCount(), 3);
    EXPECT_EQ(List->geometry(), Window->rect());
    Send(388, "");
    EXPECT_EQ(List->model()->rowCount(), 0);
}

TEST_F(MessageWindow, ALongLineCanBeScrolledIntoView) {
    Send(384, "short");
    QApplication::processEvents();
    EXPECT_EQ(List->horizontalScrollBar()->maximum(), 0);
    Send(384, std::string(500, 'W'));
    QApplication::processEvents();
    const int width = List->fontMetrics().horizontalAdvance(QString(500, 'W'));
    EXPECT_GE(List->horizontalScrollBar()->maximum() + List->viewport()->width(), width);
}

TEST_F(MessageWindow, DropsTheOldestOfTooManyLines) {
    const std::string text(3 * MessageModel::MaxLineLength, 'x');
    for (std::size_t i = 0; i < MessageModel::MaxBytes / MessageModel::MaxLineLength + 10; ++i) {
        Send(384, std::to_string(i) + text);
    }
    EXPECT_LE(static_cast<std::size_t>(List->model()->rowCount()) * MessageModel::MaxLineLength,
              MessageModel::MaxBytes);
    EXPECT_EQ(Shown(0).size(), MessageModel::MaxLineLength);
    Send(388, "");
    for (std::size_t i = 0; i <= MessageModel::MaxLines; ++i) Send(384, std::to_string(i));
    EXPECT_LE(static_cast<std::size_t>(List->model()->rowCount()), MessageModel::MaxLines);
    EXPECT_EQ(Shown(List->model()->rowCount() - 1), std::to_string(MessageModel::MaxLines));
}

TEST_F(MessageWindow, ALineWithACodeOpensItsExplanation) {
    Send(384, "[0012ta] bad symbol Q");
    Send(384, "[0099ta] of its family");
    Send(384, "[9999zz] unknown");
    Send(384, "no code");
    const std::string of0012 = "|Error|bad symbol|A name\nis wrong|Check it";
    EXPECT_EQ(Opened([&] { QTest::keyClick(List, Qt::Key_F1); }), "");  // no line is selected
    EXPECT_EQ(Opened([&] { Click(0); }), "Compile Message|0012ta" + of0012);
    EXPECT_EQ(Opened([&] { Click(1); }), "Compile Message|0099ta" + of0012);
    EXPECT_EQ(Opened([&] { QTest::keyClick(List, Qt::Key_Return); }), "Compile Message|0099ta" + of0012);
    EXPECT_EQ(Opened([&] { Click(3); }), "");
    List->setCurrentIndex(List->model()->index(2, 0));
    EXPECT_EQ(Opened([&] { QTest::keyClick(List, Qt::Key_F1); }),
              "Compile Message|9999zz|Fatal|Unknown Error||Contact Brennick Labs, Customer Support.");
    EXPECT_EQ(Hall.Calls, std::vector<std::string>(4, "ShowHelpTopic Errors"));
}

TEST_F(MessageWindow, FontAndPlacement) {
    const double size = List->font().pointSizeF();
    State.MessageFont = {.Name = "Courier New", .Size = 30, .Bold = true, .Italic = true, .ForeColor = 0};
    Window->ResetFont();
    EXPECT_EQ(List->font().family(), "Courier New");
    EXPECT_TRUE(List->font().bold() && List->font().italic());
    EXPECT_EQ(List->font().pointSizeF(), size);
    const auto place = frmMessage::InitialPlacement({100, 100, 12000, 9000}, 7500);
    EXPECT_EQ(place.Left, 0);
    EXPECT_EQ(place.Width, 9000);
    EXPECT_EQ(place.Height, 1785);
    EXPECT_EQ(place.Top, 7500 - 1785);
}

class StatusWindow : public MessageWindow {
  protected:
    std::string Label(const char* name) { return Status.findChild<QLabel*>(name)->text().toStdString(); }
    void Tell(std::uint32_t number, const std::string& first = "", const std::string& second = "") {
        Host.Libraries.Send(Status.Handle(), {.Number = number, .First = first, .Second = second});
    }
    frmStatus Status{Host.Libraries, Host.Boxes};
};

TEST_F(StatusWindow, FollowsTheMessagesAndCountsInItsCaptions) {
    EXPECT_EQ(Label("lblStatus") + Label("lblInfo") + Label("lblWarnings") + Label("lblErrors"),
              "Initializing00");
    for (const std::uint32_t number : {104u, 105u, 102u, 104u, 106u, 104u, 999u}) Tell(number, "drop");
    EXPECT_EQ(Label("lblErrors") + Label("lblWarnings"), "31");
    Tell(101, "<b>Fitting</b>\n");
    Tell(103, std::string(60000, 'x'));
    EXPECT_EQ(Label("lblStatus"), "<b>Fitting</b> ");
    EXPECT_LE(Label("lblInfo").size(), 1000u);
    Tell(384, "A", "B");
    EXPECT_EQ(Host.Boxes.LastText(), "B A");
    Status.findChild<QLabel*>("lblErrors")->setText("2147483647");
    Status.findChild<QLabel*>("lblWarnings")->setText("many");
    for (const auto& [message, error] : {std::pair(104u, 6), std::pair(105u, 13)}) {
        try {
            Tell(message);
            ADD_FAILURE();
        } catch (const base::RunTimeError& e) {
            EXPECT_EQ(e.Number(), error);
        }
    }
}

TEST_F(StatusWindow, ClosesByItsButtonOnlyWhenThatIsEnabled) {
    Status.show();
    QPushButton* ok = Status.findChild<QPushButton*>("OK");
    QTest::mouseClick(ok, Qt::LeftButton);
    QTest::keyClick(&Status, Qt::Key_Escape);
    Status.close();
    EXPECT_TRUE(Status.isVisible());
    Status.EnableOk(true);
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_FALSE(Status.isVisible());
}

}  // namespace
}  // namespace toolchain
