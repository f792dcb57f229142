#include "platform/qt/HostWindows.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <span>

#include "platform/qt/Twips.h"

namespace platform::qt {
namespace {

constexpr std::uint32_t MaxProperty = 1 << 16;  // of four bytes

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> Owned(Reply* reply) {
    return {reply, &std::free};
}

struct ClientMessage {
    xcb_window_t To = 0;  // 0: the window manager
    xcb_window_t About = To;
    xcb_atom_t Type = 0;
    std::array<std::uint32_t, 2> Numbers{};
};

// The connection of the toolkit, asked for what the toolkit does not tell: other programs' windows.
class Display {
  public:
    Display() {
        const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        if (x11 == nullptr) return;
        connection_ = x11->connection();
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }

    bool IsThere() const { return connection_ != nullptr; }
    xcb_connection_t* Connection() const { return connection_; }
    xcb_window_t Root() const { return root_; }

    xcb_atom_t Atom(std::string_view name) const {
        const auto cookie =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const auto reply = Owned(xcb_intern_atom_reply(connection_, cookie, nullptr));
        return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
    }

    std::string Text(xcb_window_t window, xcb_atom_t property) const {
        const auto reply = Property(window, property);
        if (reply == nullptr || reply->format != 8) return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }

    std::vector<std::uint32_t> Numbers(xcb_window_t window, xcb_atom_t property) const {
        const auto reply = Property(window, property);
        if (reply == nullptr || reply->format != 32) return {};
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + reply->value_len};
    }

    std::uint32_t Number(xcb_window_t window, xcb_atom_t property) const {
        const auto numbers = Numbers(window, property);
        return numbers.empty() ? 0 : numbers.front();
    }

    // Windows from back to front: those that the window manager keeps, without one the mapped ones.
    std::vector<xcb_window_t> Windows() const {
        for (const char* list : {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST"}) {
            const auto windows = Numbers(root_, Atom(list));
            if (!windows.empty()) return windows;
        }
        const auto tree =
            Owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
        if (tree == nullptr) return {};
        const std::span children(xcb_query_tree_children(tree.get()), tree->children_len);
        std::vector<xcb_window_t> windows;
        std::copy_if(children.begin(), children.end(), std::back_inserter(windows),
                     [this](xcb_window_t window) { return IsMapped(window); });
        return windows;
    }

    // Waits until it is sent: the program may end next.
    void Send(const ClientMessage& message) const {
        const bool toManager = message.To == 0;
        std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
        if (toManager) mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = message.About;
        event.type = message.Type;
        std::copy(message.Numbers.begin(), message.Numbers.end(), event.data.data32);
        const auto sent = xcb_send_event_checked(connection_, 0, toManager ? root_ : message.To, mask,
                                                 reinterpret_cast<const char*>(&event));
        Owned(xcb_request_check(connection_, sent));
    }

  private:
    std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> Property(xcb_window_t window,
                                                                             xcb_atom_t property) const {
        const auto cookie =
            xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, MaxProperty);
        return Owned(xcb_get_property_reply(connection_, cookie, nullptr));
    }

    bool IsMapped(xcb_window_t window) const {
        const auto cookie = xcb_get_window_attributes(connection_, window);
        const auto state = Owned(xcb_get_window_attributes_reply(connection_, cookie, nullptr));
        return state != nullptr && state->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    xcb_connection_t* connection_ = nullptr;
    xcb_window_t root_ = 0;
};

// A program is started as the leader of a session of its own, which all that it starts belongs to.
std::uint32_t StartedProcess(const Display& display, xcb_window_t window) {
    const auto process = static_cast<pid_t>(display.Number(window, display.Atom("_NET_WM_PID")));
    if (process <= 0) return 0;
    const std::string machine = display.Text(window, XCB_ATOM_WM_CLIENT_MACHINE);
    std::array<char, 256> here{};
    const bool known = ::gethostname(here.data(), here.size() - 1) == 0;
    if (known && !machine.empty() && machine != here.data()) return 0;
    const pid_t leader = ::getsid(process);
    return leader <= 0 ? 0 : static_cast<std::uint32_t>(leader);
}

TopLevelWindow Describe(const Display& display, xcb_window_t handle) {
    TopLevelWindow window;
    window.Handle = handle;
    window.Title = display.Text(handle, display.Atom("_NET_WM_NAME"));
    if (window.Title.empty()) window.Title = display.Text(handle, XCB_ATOM_WM_NAME);
    const xcb_window_t owner = display.Number(handle, XCB_ATOM_WM_TRANSIENT_FOR);
    window.Owner = owner == display.Root() ? 0 : owner;
    window.Process = StartedProcess(display, handle);
    return window;
}

}  // namespace

std::vector<TopLevelWindow> HostWindows::TopLevel() const {
    const Display display;
    if (!display.IsThere()) return {};
    std::vector<TopLevelWindow> windows;
    for (const xcb_window_t window : display.Windows()) windows.push_back(Describe(display, window));
    std::reverse(windows.begin(), windows.end());
    return windows;
}

void HostWindows::Close(std::uint32_t handle) {
    const Display display;
    if (!display.IsThere()) return;
    display.Send({.To = handle,
                  .Type = display.Atom("WM_PROTOCOLS"),
                  .Numbers = {display.Atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME}});
}

void HostWindows::Activate(std::uint32_t handle) {
    constexpr std::uint32_t byHand = 2;  // the manager obeys as if the user had clicked in its list
    const Display display;
    if (!display.IsThere()) return;
    display.Send(
        {.About = handle, .Type = display.Atom("_NET_ACTIVE_WINDOW"), .Numbers = {byHand, XCB_CURRENT_TIME}});
}

TopLevelWindow HostWindows::Active() const {
    const Display display;
    if (!display.IsThere()) return {};
    const xcb_window_t active = display.Number(display.Root(), display.Atom("_NET_ACTIVE_WINDOW"));
    return active == 0 ? TopLevelWindow{} : Describe(display, active);
}

ScreenSize HostWindows::Size() const {
    const QSize size = QGuiApplication::primaryScreen()->size();
    return {.Width = ToTwips(size.width()), .Height = ToTwips(size.height())};
}

}  // namespace platform::qt
