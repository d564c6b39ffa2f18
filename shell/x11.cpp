#include "x11.h"

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>

namespace kelo::shell::x11 {
namespace {

struct FreeDeleter {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter>;

} // namespace

std::optional<Connection> connection() {
    const auto* native =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!native || !native->connection()) {
        return std::nullopt;
    }
    xcb_connection_t* xcb = native->connection();
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
    if (screens.rem == 0) {
        return std::nullopt;
    }
    return Connection{xcb, screens.data->root};
}

xcb_atom_t atom(const Connection& x, std::string_view name) {
    // Atoms live as long as the X server, and Kelo has the one connection Qt opened: each name is
    // asked for once, not on every key press or shape change.
    static xcb_connection_t* internedOn = nullptr;
    static std::unordered_map<std::string, xcb_atom_t> interned;
    if (internedOn != x.xcb) {
        interned.clear();
        internedOn = x.xcb;
    }
    const std::string key(name);
    if (const auto found = interned.find(key); found != interned.end()) {
        return found->second;
    }
    const auto cookie =
        xcb_intern_atom(x.xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x.xcb, cookie, nullptr));
    if (!reply) {
        return XCB_ATOM_NONE;
    }
    interned.emplace(key, reply->atom);
    return reply->atom;
}

xcb_window_t activeWindow(const Connection& x) {
    const auto cookie =
        xcb_get_property(x.xcb, 0, x.root, atom(x, "_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x.xcb, cookie, nullptr));
    if (!reply || reply->type != XCB_ATOM_WINDOW || reply->format != 32 ||
        xcb_get_property_value_length(reply.get()) < 4) {
        return XCB_NONE;
    }
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

bool windowExists(const Connection& x, xcb_window_t window) {
    if (window == XCB_NONE) {
        return false;
    }
    // Taking the error here keeps a vanished window's BadWindow out of Qt's error log.
    xcb_generic_error_t* error = nullptr;
    const auto cookie = xcb_get_window_attributes(x.xcb, window);
    const Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(x.xcb, cookie, &error));
    std::free(error);
    return reply != nullptr;
}

void requestActivation(const Connection& x, xcb_window_t window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(x, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2; // source indication: pager
    message.data.data32[1] = XCB_CURRENT_TIME;
    message.data.data32[2] = XCB_NONE;
    xcb_send_event(x.xcb, 0, x.root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(x.xcb);
}

} // namespace kelo::shell::x11
