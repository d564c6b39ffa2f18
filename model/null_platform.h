#pragma once

#include "platform.h"

namespace kelo {

// A desktop that offers nothing: never active, no other application, no panel, silent. Used by
// tests and before the shell installs its own platform.
class NullPlatform final : public Platform {
    Q_OBJECT

public:
    using Platform::Platform;

    [[nodiscard]] bool isActive() const override { return false; }
    void activate() override {}
    void deactivate() override {}

    [[nodiscard]] std::optional<ApplicationRef> frontmost() const override { return std::nullopt; }
    [[nodiscard]] bool isThisApplication(const ApplicationRef&) const override { return false; }
    [[nodiscard]] bool handBack(const ApplicationRef&) override { return false; }

    void makePanelKey() override {}
    [[nodiscard]] bool isPanelKey() const override { return false; }
    void releaseKeyboard() override {}

    void revealFile(const QString&) override {}
    void quit() override {}

    void playReminderSound() override {}
    void performHaptic() override {}
};

} // namespace kelo
