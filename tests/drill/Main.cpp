#include <QGuiApplication>
#include <cstdio>

#include "drill/Drill.h"

namespace {

constexpr int skipped = 77;

// Milliseconds from key to key.
constexpr int unhurried = 120;
constexpr int quick = 50;

std::string SpeedName(int pause) { return pause == quick ? "Quick" : "Unhurried"; }

std::string PictureName() {
    std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(name.begin(), name.end(), '/', '-');
    return name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Hand, Drill, testing::Values(unhurried, quick),
                         [](const auto& speed) { return SpeedName(speed.param); });

Drill::Drill() : Desk(DRILL_INSTALLATION, DRILL_PICTURES, PictureName()) { SetSpeed(GetParam()); }

void Drill::TearDown() {
    if (!HasFailure()) ExpectAlive();
}

void Drill::InTextAndDesign(const std::string& text,
                            const std::function<void(const std::string& name)>& steps) {
    Start();
    for (const char* name : {"A.TXT", "A.PLD"}) {
        SCOPED_TRACE(name);
        Write(name, text);
        Open(name);
        steps(name);
    }
}

void Drill::StartWith(const std::string& name, const std::string& bytes) {
    Write(name, bytes);
    Start();
    Open(name);
}

void Drill::StartWithText() {
    Start();
    NewText();
}

void Drill::WriteSettings(const std::string& values) {
    const char* key = "[Software\\Brennick Labs\\Korvane\\5.0\\Settings]\nInitialized=number:-1\n";
    Write(".home/config/korvane/settings.ini", key + values);
}

void Drill::SaveAndExpect(const std::string& name, const std::string& bytes) {
    Key("ctrl+s");
    ExpectFile(name, bytes);
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!testing::GTEST_FLAG(list_tests) && !drill::Screen::IsPossible()) {
        std::puts("The drill is skipped: no virtual display here (Xvfb, openbox, setxkbmap, xclip).");
        return skipped;
    }
    drill::PrepareToDraw();
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
