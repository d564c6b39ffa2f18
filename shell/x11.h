#pragma once

#include <optional>
#include <string_view>
#include <xcb/xcb.h>

// The few X11 requests that Qt does not make for Kelo: window-manager hints, activation through
// the window manager and the active-window property. Everything works on the connection Qt
// already holds, so requests and Qt's own stay in order.
namespace kelo::shell::x11 {

struct Connection {
    xcb_connection_t* xcb = nullptr;
    // The root of the first X screen: RandR puts every monitor on that one screen.
    xcb_window_t root = XCB_NONE;
};

// None when Qt runs on another platform (native Wayland, offscreen).
[[nodiscard]] std::optional<Connection> connection();

// The atom of `name`, interned once per connection; XCB_ATOM_NONE when the server did not answer.
[[nodiscard]] xcb_atom_t atom(const Connection& x, std::string_view name);

// The root's _NET_ACTIVE_WINDOW: the window that has the keyboard; XCB_NONE when none is set.
[[nodiscard]] xcb_window_t activeWindow(const Connection& x);

[[nodiscard]] bool windowExists(const Connection& x, xcb_window_t window);

// Asks the window manager to activate the window, as a pager would (source indication 2).
// Window managers honour a pager's request without their focus-stealing checks, which would
// otherwise refuse a request that carries no fresh user timestamp.
void requestActivation(const Connection& x, xcb_window_t window);

} // namespace kelo::shell::x11
