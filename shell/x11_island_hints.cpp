#include "x11_island_hints.h"

#include "x11.h"

#include <QWindow>
#include <array>

namespace kelo::shell {

void applyIslandHints(QWindow& window) {
    const auto x = x11::connection();
    if (!x) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    const std::array<xcb_atom_t, 4> states{
        x11::atom(*x, "_NET_WM_STATE_ABOVE"),
        x11::atom(*x, "_NET_WM_STATE_STICKY"),
        x11::atom(*x, "_NET_WM_STATE_SKIP_TASKBAR"),
        x11::atom(*x, "_NET_WM_STATE_SKIP_PAGER"),
    };
    xcb_change_property(x->xcb, XCB_PROP_MODE_REPLACE, id, x11::atom(*x, "_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, states.size(), states.data());

    const std::uint32_t allDesktops = 0xFFFFFFFF;
    xcb_change_property(x->xcb, XCB_PROP_MODE_REPLACE, id, x11::atom(*x, "_NET_WM_DESKTOP"),
                        XCB_ATOM_CARDINAL, 32, 1, &allDesktops);
    xcb_flush(x->xcb);
}

} // namespace kelo::shell
