#include "synthetic_input.h"

#include <qpa/qwindowsysteminterface.h>

namespace kelo::Harness {

using Delivery = QWindowSystemInterface::SynchronousDelivery;

void SyntheticInput::type(const QString& text) const {
    for (const QChar character : text) {
        press(0, Qt::NoModifier, QString(character));
    }
}

void SyntheticInput::press(int key, Qt::KeyboardModifiers modifiers, const QString& text) const {
    if (!window_) {
        return;
    }
    QWindowSystemInterface::handleKeyEvent<Delivery>(window_, QEvent::KeyPress, key, modifiers,
                                                     text);
    QWindowSystemInterface::handleKeyEvent<Delivery>(window_, QEvent::KeyRelease, key, modifiers,
                                                     text);
}

void SyntheticInput::click(QPointF point) const {
    if (!window_) {
        return;
    }
    const QPointF global = window_->mapToGlobal(point);
    QWindowSystemInterface::handleMouseEvent<Delivery>(window_, point, global, Qt::LeftButton,
                                                       Qt::LeftButton, QEvent::MouseButtonPress);
    QWindowSystemInterface::handleMouseEvent<Delivery>(window_, point, global, Qt::NoButton,
                                                       Qt::LeftButton, QEvent::MouseButtonRelease);
}

} // namespace kelo::Harness
