#pragma once

#include <QObject>
#include <QQmlEngine>
#include <island_types.h>

namespace kelo::views {

// The radii of the island's outline per mode, for QML: the same numbers the shell shapes the
// window with.
class IslandOutline : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit IslandOutline(QObject* parent = nullptr)
        : QObject(parent) {}

    Q_INVOKABLE [[nodiscard]] static double topRadius(kelo::island::ModeKind mode);
    Q_INVOKABLE [[nodiscard]] static double bottomRadius(kelo::island::ModeKind mode);
};

} // namespace kelo::views
