#include <gtest/gtest.h>

#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "aids/frmTable.h"
#include "aids/windows/TableSurfaces.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "support/MemoryFiles.h"

namespace aids {
namespace {

// What is painted anew.
class PaintWatch : public QObject {
  public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    QRegion Painted;

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) Painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

struct TableWindow : testing::Test, doubles::FormUser {
    void SetUp() override {
        Desk.Clip.Content = "of the user";
        Use(Form);
    }
    void Fill(const std::vector<std::string>& fields) {  // from txtInput on, in the order of Tab
        TabTo("txtInput");
        for (const std::string& text : fields) {
            Type(text);
            Key(Qt::Key_Tab);
        }
    }
    // The middle of a cell on picGrid, which has the shape of a table of these widths.
    void Press(int inputWidth, int outputWidth, const TableCell& cell,
               Qt::MouseButton button = Qt::LeftButton) {
        auto& grid = dynamic_cast<GridSurface&>(Control<>("picGrid"));
        const TableGeometry geometry(grid.Sizes(), inputWidth, outputWidth);
        const float x = cell.Column == hexColumn ? geometry.HexLeft(cell.Half) + 300
                                                 : geometry.BitLeft(cell.Half, cell.Column) + 150;
        const float y = (static_cast<float>(cell.Row) + .5F) * geometry.CellHeight;
        QTest::mouseClick(&grid, button, {}, {int(x / 15), int(y / 15)});
        QApplication::processEvents();
    }
    std::string Focus() { return Form.focusWidget()->objectName().toStdString(); }

    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    frmTable Form{Desk.Host, nullptr};
};

TEST_F(TableWindow, FieldsModesAndCellsMakeTheStatement) {
    EXPECT_EQ(TabOrder(),
              "txtInput txtInWidth txtOutput txtOutWidth txtRows UpDownFont optInc txtFrom OK Cancel ");
    Fill({"[a1..0]", "2", "y", "4", "3"});
    Press(2, 4, {Half::Output, 1, 3});
    Press(2, 4, {Half::Output, 1, 0}, Qt::RightButton);
    Press(2, 4, {Half::Input, 0, 1});
    Press(2, 4, {Half::Input, 0, 1});
    Desk.Boxes.Inputs = {"A", "x", std::nullopt, "3"};
    for (int i = 0; i < 3; ++i) Press(2, 4, {Half::Output, 2});
    Press(2, 4, {Half::Input, 2});
    EXPECT_EQ(Desk.Boxes.Shown.size(), 1u) << "of the x";
    Click("OK");
    EXPECT_FALSE(Form.isVisible());
    EXPECT_EQ(Desk.Clip.Content,
              "TABLE [a1..0] => y {\r\n    'b'00 => 'b'0000;\r\n    'b'01 => 'b'1001;\r\n    'b'11 => "
              "'b'1010;}\r\n");
    EXPECT_FALSE(Desk.Desk.Hourglass);
}

TEST_F(TableWindow, AModeClickedFillsAgain) {
    Fill({"a", "2", "y", "1", "2"});
    Press(2, 1, {Half::Input, 0, 0});
    Click("optFillR");
    EXPECT_FALSE(Control<>("txtFrom").isEnabled() || Control<>("lblFrom").isEnabled());
    Click("optDec");
    TabTo("txtFrom");
    Key(Qt::Key_Backspace);
    Type("2");
    TabTo("OK");
    EXPECT_EQ(Desk.Boxes.Shown.size(), 0u);
    TabTo("txtInput");
    Key(Qt::Key_Return);
    EXPECT_EQ(Desk.Clip.Content, "TABLE a => y {\r\n    'b'01 => 'b'0;\r\n    'b'00 => 'b'0;}\r\n")
        << "a new start alone fills nothing";
}

TEST_F(TableWindow, ARefusedFieldKeepsTextAndFocus) {
    Fill({"a", "33"});
    QApplication::processEvents();
    EXPECT_EQ(Desk.Boxes.LastText(), "The input width is limited to 32 bits.");
    EXPECT_EQ(Focus() + Text("txtInWidth"), "txtInWidth32");
    TabTo("txtOutWidth");
    Type("x");
    Click("OK");
    QApplication::processEvents();
    EXPECT_TRUE(Form.isVisible());
    EXPECT_EQ(Desk.Boxes.LastText(), "The output variable width must be numeric.");
    EXPECT_EQ(Focus() + Text("txtOutWidth"), "txtOutWidthx");
    const std::size_t told = Desk.Boxes.Shown.size();
    Click("Cancel");
    EXPECT_FALSE(Form.isVisible());
    EXPECT_EQ(Desk.Boxes.Shown.size(), told);
    EXPECT_EQ(Desk.Clip.Content, "");
}

TEST_F(TableWindow, ABadStartIsToldBeforeTheTableIsUsed) {
    TabTo("txtFrom");
    Type("x");
    Fill({"a", "2", "y", "1"});
    Type("2");
    Key(Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_TRUE(Form.isVisible());
    EXPECT_EQ(Desk.Boxes.LastText(), "The from value for setting the input must be numeric.");
    Key(Qt::Key_Escape);
    EXPECT_EQ(Desk.Clip.Content, "");
}

TEST_F(TableWindow, AToggleDrawsTwoSmallRectangles) {
    Fill({"a", "32", "y", "32", "32768"});
    QApplication::processEvents();
    PaintWatch watch(Control<>("picGrid"));
    Press(32, 32, {Half::Input, 1, 2});
    int area = 0;
    for (const QRect& rect : watch.Painted) area += rect.width() * rect.height();
    EXPECT_EQ(watch.Painted.rectCount(), 2);
    EXPECT_LT(area, 120 * 20);

    auto& rows = Control<QScrollBar>("VScroll");
    EXPECT_TRUE(Control<>("HScroll").isEnabled());
    const int rowHeight = Control<>("picGrid").fontMetrics().height();
    rows.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(Control<>("picGrid").y(), -4 * rowHeight);
    rows.triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(Control<>("picGrid").y(), -rows.maximum() * rowHeight);
    for (int i = 0; i < 2; ++i) {  // the second time beyond the end
        QWheelEvent down({9, 9}, {9, 9}, {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Control<>("picGrid"), &down);
    }
    EXPECT_EQ(rows.value(), rows.maximum());
    TabTo("UpDownFont");
    Key(Qt::Key_Up);
    EXPECT_EQ(Text("txtFontSize"), "12");
    EXPECT_EQ(Control<>("picGrid").font().pointSize(), 12);
    EXPECT_EQ(Control<>("picGrid").pos(), QPoint(0, 0));
    for (int i = 0; i < 3; ++i) Key(Qt::Key_Up);
    EXPECT_EQ(Text("txtFontSize"), "14");
}

TEST_F(TableWindow, ShowsItsCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<frmTable>(Desk.Host, nullptr), "");
}

}  // namespace
}  // namespace aids
