#pragma once

#include <QQmlEngine>
#include <QQuickItem>

namespace kelo::views {

// The open island's soft shadow: a blurred rounded shape, made once and stretched as a nine-patch
// to whatever size the item has, so that it costs nothing per frame while the island grows.
// The item's rectangle is the body's; the blur spreads `spread` beyond it on every side.
class IslandShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double spread READ spread CONSTANT FINAL)

public:
    explicit IslandShadow(QQuickItem* parent = nullptr);

    [[nodiscard]] static double spread();
    // The shadow picture: black, blurred, with transparent edges.
    [[nodiscard]] static QImage picture();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
};

} // namespace kelo::views
