#pragma once

#include <QPointF>
#include <QPointer>
#include <QString>
#include <QWindow>

namespace kelo::Harness {

// Key strokes and clicks made up for the island's window and handed to Qt as the window system
// would hand them, so that they take Qt's normal way: shortcuts, the item with the keyboard
// focus, the item under the pointer.
class SyntheticInput {
public:
    explicit SyntheticInput(QWindow& window)
        : window_(&window) {}

    // One key press and release per character.
    void type(const QString& text) const;
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               const QString& text = {}) const;
    // A left click at a point of the window.
    void click(QPointF point) const;

private:
    QPointer<QWindow> window_;
};

} // namespace kelo::Harness
