#pragma once

#include "hot_key.h"

#include <QAbstractNativeEventFilter>
#include <array>
#include <vector>
#include <xcb/xcb.h>

namespace kelo::shell {

// Ctrl+Alt+T from any application, through a passive key grab on the X11 root window.
//
// X compares the whole modifier state of a grab, so a grab for Ctrl+Alt alone would stay silent
// while Caps Lock or Num Lock is on; the combination is grabbed once for each of those states.
// Presses are consumed here and reported through activated(), which is always delivered from the
// event loop, never from inside Qt's event dispatch.
class GlobalHotKey : public HotKey, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit GlobalHotKey(QObject* parent = nullptr);
    ~GlobalHotKey() override;

    // Grabs Ctrl+Alt+T. On failure logs "Kelo: could not register ⌃⌥T (<status>). Click the
    // notch instead." with the X error code (10 is BadAccess: another program holds the
    // combination) and keeps no partial grab.
    void registerCtrlAltT() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    // The X error code of the first failed grab, or 0 when every grab succeeded.
    int grab();
    void ungrab();
    // Every state of Caps Lock and Num Lock that the grab has to cover.
    [[nodiscard]] std::array<std::uint16_t, 4> lockStates() const;

    xcb_connection_t* xcb_ = nullptr;
    xcb_window_t root_ = XCB_NONE;
    std::vector<xcb_keycode_t> keycodes_;
    std::uint16_t numLockMask_ = 0;
    bool grabbed_ = false;
};

} // namespace kelo::shell
