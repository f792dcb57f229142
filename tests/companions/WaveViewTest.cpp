#include <gtest/gtest.h>

#include "base/RunTimeError.h"
#include "wavrik/Companion.h"
#include "wavrik/TimeView.h"

using namespace wavrik;

namespace {

TimeView ViewOf(Time end, int width) {
    TimeView view;
    view.SetWidth(width);
    view.Show(end);
    return view;
}

// "0-3:0 3-4:* 4-9:1": pixels and value, * where there is more than one.
std::string Told(const std::vector<Span>& spans) {
    std::string text;
    for (const Span& span : spans)
        text += std::to_string(span.From) + "-" + std::to_string(span.To) + ":" +
                (span.IsBusy       ? '*'
                 : span.Shown == 0 ? '.'
                                   : static_cast<char>(span.Shown)) +
                " ";
    return text;
}

}  // namespace

TEST(WaveView, ColumnsShowWhatHappensInThem) {
    struct Case {
        const char* What;
        std::vector<Change> Changes;
        const char* Told;
    };
    // 100 units in 10 columns.
    const Case cases[] = {
        {"nothing", {}, "0-10:. "},
        {"from the middle on", {{50, '1'}}, "0-5:. 5-10:1 "},
        {"one a column", {{0, '0'}, {30, '1'}, {40, '0'}}, "0-3:0 3-4:1 4-10:0 "},
        {"two in one", {{0, '0'}, {30, '1'}, {39, '0'}}, "0-3:0 3-4:* 4-10:0 "},
        {"busy neighbours",
         {{0, '0'}, {30, '1'}, {39, '0'}, {40, '1'}, {49, '0'}, {90, '1'}},
         "0-3:0 3-5:* 5-9:0 9-10:1 "},
        {"at the end", {{0, '0'}, {100, '1'}}, "0-10:0 "},
        {"busy at the edges", {{0, '0'}, {1, '1'}, {95, '0'}, {96, '1'}}, "0-1:* 1-9:1 9-10:* "},
    };
    for (const Case& each : cases) {
        Signal signal{"A", each.Changes, {}};
        EXPECT_EQ(Told(SpansOf(signal, ViewOf(100, 10))), each.Told) << each.What;
    }
    TimeView part = ViewOf(100, 10);
    part.ZoomAt(10, 2);  // 50 to 100
    EXPECT_EQ(Told(SpansOf({"A", {{0, '0'}, {20, '1'}, {60, '0'}}, {}}, part)), "0-2:1 2-10:0 ");
}

TEST(WaveView, MismatchesCanBeSeenAtAnyScale) {
    Signal signal{"A", {}, {{0, 'L'}, {500, 'H'}, {600, 'H'}}};
    const auto told = [&](const TimeView& view) {
        std::string text;
        for (const Stripe& stripe : MismatchesOf(signal, view))
            text += std::to_string(stripe.From) + "-" + std::to_string(stripe.To) + " ";
        return text;
    };
    EXPECT_EQ(told(ViewOf(1000, 100)), "0-10 50-70 ");
    EXPECT_EQ(told(ViewOf(100000, 100)), "0-2 ");
    EXPECT_EQ(told(ViewOf(1000, 1)), "0-2 ");
    TimeView end = ViewOf(1000, 100);
    end.ZoomAt(100, 2);
    EXPECT_EQ(told(end), "0-40 ");
    EXPECT_EQ(MismatchAt(signal, 599)->At, 500);
    EXPECT_EQ(MismatchAt(signal, 700), nullptr);
}

TEST(WaveView, ZoomKeepsTheTimeUnderThePointer) {
    TimeView view = ViewOf(100000, 1000);
    view.ZoomAt(300, 8);
    EXPECT_EQ(view.ToTime(300), 30000);
    view.ScrollBy(1e9);
    EXPECT_EQ(view.ToTime(1000), 100000);
    EXPECT_EQ(view.Share(), 1);
    view.ScrollToShare(0.5);
    EXPECT_EQ(view.ToTime(500), 50000);
    view.Reveal(10);
    EXPECT_EQ(view.ToTime(0), 0);
    view.ZoomAt(0, 1e-9);
    EXPECT_EQ(view.ToX(100000), 1000) << "no further out than all";
    view.SetWidth(500);
    EXPECT_EQ(view.ToX(100000), 500) << "all stays all";
    view.ZoomAt(0, 1e12);
    EXPECT_LE(view.ToX(1), 50);
}

TEST(WaveView, MismatchesFollowInTimeThenFromTopToBottom) {
    Waves waves;
    waves.Signals = {{"A", {}, {{100, 'L'}, {300, 'L'}}}, {"B", {}, {}}, {"C", {}, {{100, 'H'}}}};
    const Spot order[] = {{100, 0}, {100, 2}, {300, 0}};
    Spot at;
    for (const Spot& each : order) {
        ASSERT_EQ(FindMismatch(waves, at, Way::Forward), each);
        at = each;
    }
    EXPECT_FALSE(FindMismatch(waves, at, Way::Forward));
    EXPECT_EQ(FindMismatch(waves, at, Way::Back), order[1]);
    EXPECT_EQ(FindMismatch(waves, order[1], Way::Back), order[0]);
    EXPECT_FALSE(FindMismatch(waves, order[0], Way::Back));
}

TEST(Companion, CommandsAndArguments) {
    for (const char* wrong : {"", "Open", "Open ", "Tile 1 2 3", "Tile 1 2 3 4 5", "Tile a b c d",
                              "Tile 0 0 nan 1", "Tile 0 0 1e9 1", "display"})
        EXPECT_FALSE(ReadCommand(wrong)) << wrong;
    const auto tile = std::get<Placement>(*ReadCommand("Tile 0 14407.5 14407.5 10800"));
    EXPECT_EQ(tile.Left, 14407.5F);
    EXPECT_EQ(tile.Height, 10800.0F);
    EXPECT_EQ(std::get<OpenFile>(*ReadCommand("Open C:\\A B.SI")).Path, "C:\\A B.SI");
    EXPECT_EQ(FileOf({"/a", "b.SI", "/NoSplash"}), "/a b.SI");
    EXPECT_EQ(FileOf({"/nosplash"}), "");
}
