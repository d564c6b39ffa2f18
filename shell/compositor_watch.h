#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <xcb/xcb.h>

namespace kelo::shell {

// Whether a compositing manager runs, followed as it starts and stops. Only with one does the
// window's alpha show (and so a shadow, or a glass island); without one every transparent pixel
// is shown black.
//
// On X11 a compositing manager owns the selection _NET_WM_CM_S<screen> for as long as it runs;
// the XFixes extension reports every change of that owner, including the owner's exit. Kelo's
// window lives on the first screen (RandR puts every monitor on it), so that screen's selection
// is the one watched. Outside X11 the answer is fixed: a Wayland session always composites.
class CompositorWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit CompositorWatch(QObject* parent = nullptr);
    ~CompositorWatch() override;

    [[nodiscard]] bool running() const { return running_; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

Q_SIGNALS:
    void runningChanged(bool running);

private:
    [[nodiscard]] bool ownerExists() const;

    xcb_connection_t* xcb_ = nullptr;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    std::uint8_t selectionNotify_ = 0; // the XFixes event's response type; 0 while not watching
    bool running_ = false;
};

} // namespace kelo::shell
