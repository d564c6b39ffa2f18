#include "global_hot_key.h"

#include "system_log.h"
#include "x11.h"

#include <QCoreApplication>
#include <X11/keysym.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <xcb/xcb_keysyms.h>

namespace kelo::shell {
namespace {

constexpr std::uint16_t ctrlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

struct KeySymbols {
    explicit KeySymbols(xcb_connection_t* xcb)
        : table(xcb_key_symbols_alloc(xcb)) {}
    ~KeySymbols() { xcb_key_symbols_free(table); }
    KeySymbols(const KeySymbols&) = delete;
    KeySymbols& operator=(const KeySymbols&) = delete;

    std::vector<xcb_keycode_t> keycodes(xcb_keysym_t keysym) const {
        std::vector<xcb_keycode_t> codes;
        std::unique_ptr<xcb_keycode_t, decltype(&std::free)> list(
            table ? xcb_key_symbols_get_keycode(table, keysym) : nullptr, &std::free);
        for (const xcb_keycode_t* code = list.get(); code && *code != XCB_NO_SYMBOL; ++code) {
            codes.push_back(*code);
        }
        return codes;
    }

    xcb_key_symbols_t* table;
};

// Num Lock has no fixed modifier bit; the server's modifier map says which Mod it sits on.
std::uint16_t numLockMask(xcb_connection_t* xcb, const KeySymbols& symbols) {
    const auto numLockCodes = symbols.keycodes(XK_Num_Lock);
    std::unique_ptr<xcb_get_modifier_mapping_reply_t, decltype(&std::free)> map(
        xcb_get_modifier_mapping_reply(xcb, xcb_get_modifier_mapping(xcb), nullptr), &std::free);
    if (!map || numLockCodes.empty()) {
        return 0;
    }
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(map.get());
    const int perModifier = map->keycodes_per_modifier;
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int i = 0; i < perModifier; ++i) {
            const xcb_keycode_t code = codes[modifier * perModifier + i];
            if (code != XCB_NO_SYMBOL &&
                std::find(numLockCodes.begin(), numLockCodes.end(), code) != numLockCodes.end()) {
                return static_cast<std::uint16_t>(1U << modifier);
            }
        }
    }
    return 0;
}

} // namespace

GlobalHotKey::GlobalHotKey(QObject* parent)
    : HotKey(parent) {}

// The filter takes itself out of the event dispatcher as it goes.
GlobalHotKey::~GlobalHotKey() {
    if (grabbed_) {
        ungrab();
    }
}

void GlobalHotKey::registerCtrlAltT() {
    const auto x = x11::connection();
    if (!x) {
        systemLog(registrationFailure("no X11 display"));
        return;
    }
    xcb_ = x->xcb;
    root_ = x->root;
    const int status = grab();
    if (status != 0) {
        ungrab();
        systemLog(registrationFailure(std::to_string(status)));
        return;
    }
    grabbed_ = true;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

std::array<std::uint16_t, 4> GlobalHotKey::lockStates() const {
    return {0, XCB_MOD_MASK_LOCK, numLockMask_,
            static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | numLockMask_)};
}

int GlobalHotKey::grab() {
    const KeySymbols symbols(xcb_);
    keycodes_ = symbols.keycodes(XK_t);
    numLockMask_ = numLockMask(xcb_, symbols);
    if (keycodes_.empty()) {
        return XCB_MATCH; // the keyboard map has no T: nothing can be grabbed
    }
    std::vector<xcb_void_cookie_t> cookies;
    for (const xcb_keycode_t code : keycodes_) {
        for (const std::uint16_t lock : lockStates()) {
            // owner_events off: the press goes to the root even while the island has the
            // keyboard, so the same combination also closes it.
            cookies.push_back(xcb_grab_key_checked(xcb_, 0, root_, ctrlAlt | lock, code,
                                                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    int status = 0;
    for (const auto cookie : cookies) {
        if (xcb_generic_error_t* error = xcb_request_check(xcb_, cookie)) {
            if (status == 0) {
                status = error->error_code;
            }
            std::free(error);
        }
    }
    return status;
}

void GlobalHotKey::ungrab() {
    for (const xcb_keycode_t code : keycodes_) {
        for (const std::uint16_t lock : lockStates()) {
            xcb_ungrab_key(xcb_, code, root_, ctrlAlt | lock);
        }
    }
    xcb_flush(xcb_);
}

bool GlobalHotKey::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const std::uint8_t type = event->response_type & 0x7F;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) {
        return false;
    }
    const auto* key = static_cast<const xcb_key_press_event_t*>(message);
    const std::uint16_t significant =
        key->state & ~(XCB_MOD_MASK_LOCK | numLockMask_) & 0xFF; // keyboard modifiers only
    if (key->event != root_ || significant != ctrlAlt ||
        std::find(keycodes_.begin(), keycodes_.end(), key->detail) == keycodes_.end()) {
        return false;
    }
    if (type == XCB_KEY_PRESS) {
        QMetaObject::invokeMethod(this, &GlobalHotKey::activated, Qt::QueuedConnection);
    }
    return true;
}

} // namespace kelo::shell
