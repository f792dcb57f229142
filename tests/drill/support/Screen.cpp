#include "drill/support/Screen.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QLoggingCategory>
#include <QStandardPaths>
#include <algorithm>

// X's names stand against the toolkit's: they come last.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace drill {
namespace {

using std::chrono::milliseconds;

constexpr auto screenSize = "1024x768x24";
constexpr auto lostKeys = 500;  // milliseconds

int IgnoreError(Display*, XErrorEvent*) { return 0; }  // a window may go while it is looked at

Atom AtomOf(Display* x, const char* name) { return XInternAtom(x, name, False); }

void Begin(QProcess& process, const char* program, const QStringList& arguments, const std::string& log) {
    process.setStandardErrorFile(QString::fromStdString(log));
    EndWithUs(process);
    process.start(program, arguments);
    if (!process.waitForStarted()) throw Miss(std::string("cannot start ") + program);
}

void Stop(QProcess& process) {
    process.kill();
    process.waitForFinished();
}

}  // namespace

void EndWithUs(QProcess& process) {
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void PrepareToDraw() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The user's own taste would reach the started program, too.
    for (const char* name : {"QT_SCALE_FACTOR", "QT_FONT_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME",
                             "XDG_CURRENT_DESKTOP", "WAYLAND_DISPLAY"})
        qunsetenv(name);
    QLoggingCategory::setFilterRules(
        "default.warning=false");  // of the toolkit, about a home that is not used
}

bool Screen::IsPossible() {
    for (const char* program : {"Xvfb", "openbox", "xclip", "setxkbmap"})
        if (QStandardPaths::findExecutable(program).isEmpty()) return false;
    return true;
}

Screen::Screen(const std::string& logFolder) {
    // Without auto-repeat: a key that a busy machine holds too long counts once.
    Begin(server_, "Xvfb",
          {"-displayfd", "1", "-screen", "0", screenSize, "-dpi", "96", "-r", "-noreset", "-nolisten", "tcp"},
          logFolder + "/xvfb.log");
    if (!server_.waitForReadyRead(30000)) throw Miss("the virtual display does not start");
    name_ = ":" + server_.readAllStandardOutput().trimmed().toStdString();
    x_ = XOpenDisplay(name_.c_str());
    if (x_ == nullptr) throw Miss("no connection to the display " + name_);
    XSetErrorHandler(IgnoreError);
    XSelectInput(x_, DefaultRootWindow(x_), StructureNotifyMask);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", QString::fromStdString(name_));
    manager_.setProcessEnvironment(environment);
    Begin(manager_, "openbox", {"--sm-disable", "--config-file", DRILL_SUPPORT "/openbox.xml"},
          logFolder + "/openbox.log");
    const auto root = DefaultRootWindow(x_);
    const bool manages = Within(Patience, [&] {
        const auto check = Longs(root, "_NET_SUPPORTING_WM_CHECK");
        return !check.empty() && !Longs(check[0], "_NET_SUPPORTING_WM_CHECK").empty();
    });
    if (!manages) throw Miss("the window manager does not start");
    withoutKeys_.start();
}

Screen::~Screen() {
    if (x_ != nullptr) XCloseDisplay(x_);
    Stop(manager_);
    Stop(server_);
}

std::vector<unsigned long> Screen::Longs(unsigned long window, const char* property) const {
    Atom type;
    int format;
    unsigned long count = 0, rest;
    unsigned char* data = nullptr;
    XGetWindowProperty(x_, window, AtomOf(x_, property), 0, 1024, False, AnyPropertyType, &type, &format,
                       &count, &rest, &data);
    std::vector<unsigned long> values;
    if (data != nullptr && format == 32) {
        const auto* longs = reinterpret_cast<unsigned long*>(data);
        values.assign(longs, longs + count);
    }
    if (data != nullptr) XFree(data);
    return values;
}

Window Screen::Look(unsigned long id) const {
    Window window;
    XWindowAttributes attributes;
    if (XGetWindowAttributes(x_, id, &attributes) == 0 || attributes.map_state != IsViewable) return window;
    ::Window child;
    int left, top;
    XTranslateCoordinates(x_, id, DefaultRootWindow(x_), 0, 0, &left, &top, &child);
    window.Id = id;
    window.Place = QRect(left, top, attributes.width, attributes.height);
    XTextProperty title{};
    if (XGetTextProperty(x_, id, &title, AtomOf(x_, "_NET_WM_NAME")) != 0 && title.value != nullptr) {
        window.Title.assign(reinterpret_cast<char*>(title.value), title.nitems);
        XFree(title.value);
    }
    return window;
}

Window Screen::Active() {
    const auto active = Longs(DefaultRootWindow(x_), "_NET_ACTIVE_WINDOW");
    ::Window focused = 0;
    int revert = 0;
    XGetInputFocus(x_, &focused, &revert);
    Window window = active.empty() || active[0] == 0 || active[0] != focused ? Window() : Look(focused);
    if (window.Id != 0) {
        const auto types = Longs(window.Id, "_NET_WM_WINDOW_TYPE");
        const Atom splash = AtomOf(x_, "_NET_WM_WINDOW_TYPE_SPLASH");
        if (std::find(types.begin(), types.end(), splash) != types.end()) window = {};
    } else if (const auto windows = Windows(); windows.empty()) {
        withoutKeys_.start();
    } else if (withoutKeys_.hasExpired(lostKeys)) {
        // The window manager loses them when two windows close at once. A person clicks on what is left.
        Tell(windows.back().Id, DefaultRootWindow(x_), "_NET_ACTIVE_WINDOW", {2});
        withoutKeys_.start();
    }
    if (window.Id != 0) withoutKeys_.start();
    return window;
}

std::vector<Window> Screen::Windows() const {
    std::vector<Window> windows;
    for (const auto id : Longs(DefaultRootWindow(x_), "_NET_CLIENT_LIST"))
        if (Window window = Look(id); window.Id != 0) windows.push_back(window);
    return windows;
}

// The toolkit tells the type of a menu only when it opens for the first time.
std::vector<Window> Screen::Menus() const {
    ::Window root, parent, *children = nullptr;
    unsigned count = 0;
    XQueryTree(x_, DefaultRootWindow(x_), &root, &parent, &children, &count);
    std::vector<Window> menus;
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(x_, children[i], &attributes) == 0 || attributes.override_redirect == False)
            continue;
        // The window manager has such windows too: of one pixel.
        if (Window window = Look(children[i]); window.Place.width() > 10) menus.push_back(window);
    }
    if (children != nullptr) XFree(children);
    return menus;
}

void Screen::Place(const Window& window, const QRect& inside) {
    XMoveResizeWindow(x_, window.Id, inside.x(), inside.y(), static_cast<unsigned>(inside.width()),
                      static_cast<unsigned>(inside.height()));
    XSync(x_, False);
}

// Sends the message to `to`, about the window `id`.
void Screen::Tell(unsigned long id, unsigned long to, const char* message,
                  const std::vector<unsigned long>& values) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = id;
    event.xclient.message_type = AtomOf(x_, message);
    event.xclient.format = 32;
    for (std::size_t i = 0; i < values.size(); ++i) event.xclient.data.l[i] = static_cast<long>(values[i]);
    const long mask = to == id ? NoEventMask : SubstructureRedirectMask | SubstructureNotifyMask;
    XSendEvent(x_, to, False, mask, &event);
    XFlush(x_);
}

bool Screen::Ping(unsigned long id) {
    const Atom ping = AtomOf(x_, "_NET_WM_PING");
    Tell(id, id, "WM_PROTOCOLS", {ping, ++pings_, id});
    return Within(Patience, [&] {
        while (XPending(x_) > 0) {
            XEvent event;
            XNextEvent(x_, &event);
            if (event.type == ClientMessage && static_cast<Atom>(event.xclient.data.l[0]) == ping &&
                static_cast<unsigned long>(event.xclient.data.l[1]) == pings_)
                return true;
        }
        return Look(id).Id == 0;  // gone: nothing left to wait for
    });
}

// The program answers the first ping when it has fetched what came before, the second when it has worked
// it off.
void Screen::Settle(const Window& window) {
    if (window.Id == 0) return;
    for (int i = 0; i < 2; ++i)
        if (!Ping(window.Id)) throw Miss("the window \"" + window.Title + "\" does not answer");
}

QImage Screen::Picture() const {
    const auto root = DefaultRootWindow(x_);
    const int width = DisplayWidth(x_, 0), height = DisplayHeight(x_, 0);
    XImage* image = XGetImage(x_, root, 0, 0, static_cast<unsigned>(width), static_cast<unsigned>(height),
                              AllPlanes, ZPixmap);
    if (image == nullptr) throw Miss("no picture of the screen");
    const QImage view(reinterpret_cast<uchar*>(image->data), width, height, image->bytes_per_line,
                      QImage::Format_RGB32);
    const QImage copy = view.copy();
    XDestroyImage(image);
    return copy;
}

}  // namespace drill
