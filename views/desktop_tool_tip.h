#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>

namespace kelo::views {

// Tooltips in windows of their own, so that the island's small window does not cut them off.
class DesktopToolTip : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit DesktopToolTip(QObject* parent = nullptr)
        : QObject(parent) {}

    // Shows the text just below the item.
    Q_INVOKABLE void show(QQuickItem* item, const QString& text);
    Q_INVOKABLE void hide();
};

} // namespace kelo::views
