#include "shell/windows/Welcome.h"

#include "ShellFixture.h"
#include "support/FormUser.h"

namespace {

struct WelcomeTexts : ShellFixture, doubles::FormUser {
    using FormUser::Key;
    QWidget& Texts() { return Control<>("Welcome"); }
    // Whether something is drawn beside the text.
    bool IsFramed(const std::string& name) {
        const QImage image = Control<>(name).grab().toImage();
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, 1) != image.pixel(0, 0)) return true;
        return false;
    }
};

}  // namespace

TEST_F(WelcomeTexts, AreReachedByTabAndDoWhatTheySay) {
    state.LastPath = folder.Logic("elsewhere") + "\\";
    Start();
    Use(shell->Main());
    ASSERT_TRUE(Texts().isVisible());
    shell->TheApp().Hall.ToolChain->BringMessagesToFront();
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Control<>("cmdmnuHelpContents").hasFocus());
    EXPECT_FALSE(IsFramed("cmdOpenExample"));
    TabTo("cmdOpenExample");
    EXPECT_TRUE(IsFramed("cmdOpenExample"));
    EXPECT_EQ(shell->Main().ActiveChild()->Title(), "Messages");  // as before
    Key(Qt::Key_X);                                               // no key of a button
    EXPECT_TRUE(desktop.Boxes.FileRequests.empty());
    Key(Qt::Key_Space);  // the dialog is cancelled
    EXPECT_EQ(desktop.Boxes.FileRequests.back().InitialFolder, state.ExamplesDir);
    EXPECT_TRUE(Texts().isVisible());
    TabTo("cmdmnuHelpContents");
    Key(Qt::Key_Return);
    EXPECT_EQ(desktop.Boxes.LastText(),
              "The help file " + folder.Logic("Korvane\\Korvane.HLP") + " is missing.");
}

TEST_F(WelcomeTexts, GoWithTheFirstDocumentAndComeBackWithTheLast) {
    Start();
    Use(shell->Main());
    QWidget& texts = Texts();
    editor::frmDocument& one = NewText();
    editor::frmDocument& two = NewText();
    EXPECT_FALSE(texts.isVisible());
    one.Unload();
    EXPECT_FALSE(texts.isVisible());
    two.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(texts.isVisible());
    shell->Main().resize(200, 150);
    QApplication::processEvents();
    EXPECT_LE(shell->Main().Area().viewport()->childrenRect().height(),
              shell->Main().Area().viewport()->height());
}

TEST_F(WelcomeTexts, ShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults([] {
                  auto area = std::make_unique<QMdiArea>();
                  area->resize(800, 600);
                  new shell::Welcome(*area, {{"A", "Open", "what it opens"}, {"B", "Read", "the guide"}}, {});
                  return area;
              }),
              "");
}

TEST_F(ShellFixture, EveryControlOfTheMainWindowHasAName) {
    folder.Write("A.PLD", "Name A;\r\n");
    Start();
    shell->TheApp().Hall.Editor->OpenDocument(folder.Logic("A.PLD"));
    shell->TheApp().Hall.Project->ShowProject();
    EXPECT_EQ(doubles::NamelessControls(shell->Main()), "");
}
