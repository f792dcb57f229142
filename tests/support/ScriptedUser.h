#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

namespace doubles {

// What a user does while the program waits for a tool: each step runs again and again until it is done.
class ScriptedUser {
  public:
    using Step = std::function<bool()>;  // true: done

    explicit ScriptedUser(std::vector<Step> steps) : steps_(std::move(steps)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (done_ < steps_.size() && steps_[done_]()) ++done_;
        });
        timer_.start(1);
    }
    ~ScriptedUser() { EXPECT_EQ(done_, steps_.size()) << "the user was left waiting"; }
    ScriptedUser(const ScriptedUser&) = delete;
    ScriptedUser& operator=(const ScriptedUser&) = delete;

  private:
    std::vector<Step> steps_;
    std::size_t done_ = 0;
    QTimer timer_;
};

// The box that asks about a silent tool, while it is open.
inline QDialog* ToolBox() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "ToolBox" && window->isVisible()) return qobject_cast<QDialog*>(window);
    return nullptr;
}

// Steps.
inline bool BoxOpens() { return ToolBox() != nullptr && ToolBox()->isActiveWindow(); }
inline bool BoxGoes() { return ToolBox() == nullptr; }

// A key as the host system delivers it: to the window that has the keyboard.
inline bool PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWindow(), key, modifiers);
    return true;
}

}  // namespace doubles
