#pragma once

#include <QObject>
#include <QPointer>
#include <QScreen>
#include <QSizeF>
#include <optional>

namespace kelo::shell {

// Chooses the screen the island hangs from and measures the notch there (see placeNotch()), and
// tells when that has to be done again: screens added, removed, rearranged or resized, or the
// desktop's panels changing the top margin that the fallback notch follows.
class ScreenPlacement : public QObject {
    Q_OBJECT

public:
    // `notchPixels` is the device's notch height, read once: it only changes with a reboot.
    explicit ScreenPlacement(std::optional<int> notchPixels, QObject* parent = nullptr);

    // Measures now. Without any screen the screen is null and the notch is left as it was.
    void measure();

    [[nodiscard]] QScreen* screen() const { return screen_; }
    [[nodiscard]] QSizeF notch() const { return notch_; }

Q_SIGNALS:
    void screensChanged();

private:
    void watch(QScreen* screen);

    std::optional<int> notchPixels_;
    QPointer<QScreen> screen_;
    QSizeF notch_;
};

} // namespace kelo::shell
