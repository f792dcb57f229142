#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QRect>
#include <QThread>
#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

struct _XDisplay;

namespace drill {

// A step that did not do what it should.
struct Miss : std::runtime_error {
    using std::runtime_error::runtime_error;
};

constexpr std::chrono::seconds Patience{20};  // how long a busy machine may take for a step

// Looks at `holds` again and again, with `rest` milliseconds between, until it is true or the time is up.
template <class Condition>
bool Within(std::chrono::milliseconds time, Condition holds, unsigned long rest = 5) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end) return false;
        QThread::msleep(rest);
    }
    return true;
}

// Before the application object is made: it draws what is looked for, on no display.
void PrepareToDraw();

// The program goes with this one, even if this one crashes.
void EndWithUs(QProcess& process);

struct Window {
    unsigned long Id = 0;
    std::string Title;
    QRect Place;  // of its inside, on the screen
};

// A virtual display of its own with a window manager that has no keys but Alt+F4.
class Screen {
  public:
    explicit Screen(const std::string& logFolder);
    ~Screen();

    // False where the programs that it needs are missing.
    static bool IsPossible();

    _XDisplay* X() const { return x_; }
    std::string Name() const { return name_; }
    QImage Picture() const;

    // The one with the keys; without Id if there is none. Splash windows do not count.
    Window Active();
    std::vector<Window> Windows() const;  // of programs, the oldest first
    std::vector<Window> Menus() const;    // open menus and lists, the last opened last; a tip counts too
    void Place(const Window& window, const QRect& inside);

    // Waits until the program behind the window has handled all keys and clicks so far.
    void Settle(const Window& window);

  private:
    std::vector<unsigned long> Longs(unsigned long window, const char* property) const;
    Window Look(unsigned long id) const;
    void Tell(unsigned long id, unsigned long to, const char* message,
              const std::vector<unsigned long>& values);
    bool Ping(unsigned long id);

    QProcess server_, manager_;
    std::string name_;
    _XDisplay* x_ = nullptr;
    unsigned long pings_ = 0;
    QElapsedTimer withoutKeys_;
};

}  // namespace drill
