#pragma once

#include <QStringList>
#include <platform.h>

namespace kelo::testing {

// A desktop that answers as configured and records every request in `calls`, in order.
// Activation and key status follow the requests, as a window manager would.
class FakePlatform final : public Platform {
    Q_OBJECT

public:
    using Platform::Platform;

    bool active = false;
    bool panelKey = false;
    std::optional<ApplicationRef> front;
    bool acceptsHandBack = true;
    QStringList calls;

    [[nodiscard]] bool isActive() const override { return active; }
    void activate() override {
        calls << QStringLiteral("activate");
        active = true;
    }
    void deactivate() override {
        calls << QStringLiteral("deactivate");
        active = false;
    }

    [[nodiscard]] std::optional<ApplicationRef> frontmost() const override { return front; }
    [[nodiscard]] bool isThisApplication(const ApplicationRef& app) const override {
        return app == self;
    }
    [[nodiscard]] bool handBack(const ApplicationRef& app) override {
        calls << QStringLiteral("handBack %1").arg(app.handle);
        if (acceptsHandBack) {
            active = false;
            panelKey = false;
        }
        return acceptsHandBack;
    }

    void makePanelKey() override {
        calls << QStringLiteral("makePanelKey");
        panelKey = true;
    }
    [[nodiscard]] bool isPanelKey() const override { return panelKey; }
    void releaseKeyboard() override {
        calls << QStringLiteral("releaseKeyboard");
        panelKey = false;
    }

    void playReminderSound() override { calls << QStringLiteral("sound"); }
    void performHaptic() override { calls << QStringLiteral("haptic"); }

    // The handle by which this desktop knows Kelo itself.
    static constexpr ApplicationRef self{1};
};

} // namespace kelo::testing
