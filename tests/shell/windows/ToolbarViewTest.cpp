#include "shell/windows/ToolbarView.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

#include "shell/frmMain.h"

// The buttons under the mouse.
TEST(ToolbarView, ShowsTheStateAndTellsOfClicks) {
    shell::InitPictures();
    QToolBar bar;
    auto& view = *new shell::ToolbarView(bar);
    bar.resize(2000, 60);
    bar.show();
    std::vector<std::string> told;
    const auto widget = [&](const char* key) { return bar.widgetForAction(bar.findChild<QAction*>(key)); };
    QTest::mouseClick(widget("Save"), Qt::RightButton);  // nobody listens yet
    view.OnClick = [&](const std::string& key) { told.push_back(key); };
    view.OnRightClick = [&](const std::string& tip) { told.push_back("right " + tip); };

    shell::ToolbarState state;
    state.Button(16) = {.Visible = true, .Enabled = true, .Tip = "A <b> & c", .Image = 20};
    state.Button(17) = {.Visible = true, .Enabled = false, .Tip = "Other", .Image = 0};
    state.Button(18).Visible = false;
    view.Show(state);
    QAction* tool = bar.findChild<QAction*>("Util1");
    EXPECT_EQ(tool->text(), "A <b> && c");
    EXPECT_TRUE(tool->toolTip().contains("&lt;b&gt;")) << tool->toolTip().toStdString();
    EXPECT_FALSE(tool->icon().isNull());
    EXPECT_TRUE(bar.findChild<QAction*>("Util2")->icon().isNull());
    EXPECT_TRUE(tool->isVisible() && !bar.findChild<QAction*>("Util3")->isVisible());
    EXPECT_TRUE(bar.actions().at(3)->isSeparator() && bar.actions().size() == shell::ButtonCount);

    QTest::mouseClick(widget("Util1"), Qt::LeftButton);
    QTest::mouseClick(widget("Util1"), Qt::RightButton);
    QTest::mouseClick(widget("Util2"), Qt::LeftButton);  // disabled
    QTest::mouseClick(widget("Util2"), Qt::RightButton);
    QTest::mouseClick(bar.widgetForAction(bar.actions().at(3)), Qt::RightButton);  // a line
    state.Button(17).Enabled = true;
    QSignalSpy unchanged(tool, &QAction::changed);
    view.Show(state);
    EXPECT_EQ(unchanged.size(), 0);
    QTest::mouseClick(widget("Util2"), Qt::LeftButton);
    EXPECT_EQ(told, (std::vector<std::string>{"Util1", "right A <b> & c", "right Other", "Util2"}));
}
