#include <gtest/gtest.h>

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTest>

#include "support/FormUser.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"
#include "toolchain/frmErrorMessage.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmStatus.h"

namespace toolchain {
namespace {

class MessageWindow : public testing::Test,
                      public doubles::Bench<doubles::MemoryFiles>,
                      protected doubles::FormUser {
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
        Desk.Libraries.Send(Window->Handle(), {.Number = number, .First = "", .Second = text});
    }
    std::string Shown(int row) { return List->model()->index(row, 0).data().toString().toStdString(); }
    void ClickRow(int row) {
        const QRect place = List->visualRect(List->model()->index(row, 0));
        QTest::mouseClick(List->viewport(), Qt::LeftButton, {}, place.center());
    }
    // What frmErrorMessage, which `action` opens, shows field by field.
    std::string Opened(const std::function<void()>& action) {
        std::string seen;
        Drive(action, {{"frmErrorMessage", "OK", [&] {
                            seen = Texts({"txtCode", "txtLevel", "txtMessage", "txtDescription", "txtInfo"});
                            Click("OK");
                        }}});
        return seen;
    }

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
    const std::string of0012 = "|Error|bad symbol|A name\nis wrong|Check it|";
    Drive([&] { QTest::keyClick(List, Qt::Key_F1); }, {});  // no line is selected: nothing opens
    EXPECT_EQ(Opened([&] { ClickRow(0); }), "0012ta" + of0012);
    EXPECT_EQ(Opened([&] { ClickRow(1); }), "0099ta" + of0012);
    EXPECT_EQ(Opened([&] { QTest::keyClick(List, Qt::Key_Return); }), "0099ta" + of0012);
    Drive([&] { ClickRow(3); }, {});
    List->setCurrentIndex(List->model()->index(2, 0));
    EXPECT_EQ(Opened([&] { QTest::keyClick(List, Qt::Key_F1); }),
              "9999zz|Fatal|Unknown Error||Contact Brennick Labs, Customer Support.|");
}

TEST_F(MessageWindow, TakesNameAndStyleOfItsFontNotTheSize) {
    const double size = List->font().pointSizeF();
    State.MessageFont = {.Name = "Courier New", .Size = 30, .Bold = true, .Italic = true, .ForeColor = 0};
    Window->ResetFont();
    EXPECT_EQ(List->font().family(), "Courier New");
    EXPECT_TRUE(List->font().bold() && List->font().italic());
    EXPECT_EQ(List->font().pointSizeF(), size);
}

class StatusWindow : public MessageWindow {
  protected:
    StatusWindow() { Use(Status); }
    void Tell(std::uint32_t number, const std::string& first = "", const std::string& second = "") {
        Desk.Libraries.Send(Status.Handle(), {.Number = number, .First = first, .Second = second});
    }
    frmStatus Status{Desk.Libraries, Desk.Boxes};
};

TEST_F(StatusWindow, FollowsTheMessagesAndCountsInItsCaptions) {
    EXPECT_EQ(Texts({"lblStatus", "lblInfo", "lblWarnings", "lblErrors"}), "Initializing||0|0|");
    for (const std::uint32_t number : {104u, 105u, 102u, 104u, 106u, 104u, 999u}) Tell(number, "drop");
    EXPECT_EQ(Texts({"lblErrors", "lblWarnings"}), "3|1|");
    Tell(101, "<b>Fitting</b>\n");
    Tell(103, std::string(60000, 'x'));
    EXPECT_EQ(Text("lblStatus"), "<b>Fitting</b> ");
    EXPECT_LE(Text("lblInfo").size(), 1000u);
    Tell(384, "A", "B");
    EXPECT_EQ(Desk.Boxes.LastText(), "B A");
    Control<QLabel>("lblErrors").setText("2147483647");
    Control<QLabel>("lblWarnings").setText("many");
    EXPECT_EQ(doubles::ErrorOf([&] { Tell(104); }), 6);
    EXPECT_EQ(doubles::ErrorOf([&] { Tell(105); }), 13);
}

TEST_F(StatusWindow, ClosesByItsButtonOnlyWhenThatIsEnabled) {
    Click("OK");
    Key(Qt::Key_Escape);
    Status.close();
    EXPECT_TRUE(Status.isVisible());
    Status.EnableOk(true);
    Click("OK");
    EXPECT_FALSE(Status.isVisible());
}

TEST_F(StatusWindow, FormsShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<frmStatus>(Desk.Libraries, Desk.Boxes), "");
    EXPECT_EQ(doubles::FormFaults<frmErrorMessage>(ErrorEntry{}), "");
}

}  // namespace
}  // namespace toolchain
