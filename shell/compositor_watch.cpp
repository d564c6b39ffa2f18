#include "compositor_watch.h"

#include "x11.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/xfixes.h>

namespace kelo::shell {

CompositorWatch::CompositorWatch(QObject* parent)
    : QObject(parent) {
    const auto x = x11::connection();
    if (!x) {
        running_ = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
        return;
    }
    xcb_ = x->xcb;
    selection_ = x11::atom(*x, "_NET_WM_CM_S0");
    const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(xcb_, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present || selection_ == XCB_ATOM_NONE) {
        running_ = selection_ != XCB_ATOM_NONE && ownerExists();
        return;
    }
    // Qt has agreed on an XFixes version on this connection already; asking again is allowed
    // and makes this code independent of that.
    std::free(xcb_xfixes_query_version_reply(
        xcb_, xcb_xfixes_query_version(xcb_, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    xcb_xfixes_select_selection_input(xcb_, x->root, selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(xcb_);
    selectionNotify_ = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    QCoreApplication::instance()->installNativeEventFilter(this);
    // Looked at after subscribing, so that a compositor starting in between is not missed.
    running_ = ownerExists();
}

// The filter takes itself out of the event dispatcher as it goes.
CompositorWatch::~CompositorWatch() = default;

bool CompositorWatch::ownerExists() const {
    std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> reply(
        xcb_get_selection_owner_reply(xcb_, xcb_get_selection_owner(xcb_, selection_), nullptr),
        &std::free);
    return reply && reply->owner != XCB_NONE;
}

bool CompositorWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (selectionNotify_ == 0 || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != selectionNotify_ ||
        static_cast<const xcb_xfixes_selection_notify_event_t*>(message)->selection != selection_) {
        return false;
    }
    const bool running = ownerExists();
    if (running != running_) {
        running_ = running;
        Q_EMIT runningChanged(running_);
    }
    return false;
}

} // namespace kelo::shell
