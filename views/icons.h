#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace kelo::views {

// One of Kelo's icons, drawn on a 24-unit square: a path to fill (even-odd) and a path to
// stroke with round caps and joins, either of which may be empty. Tinted by whoever draws it.
struct IconShape {
    Q_GADGET
    QML_VALUE_TYPE(iconShape)
    Q_PROPERTY(QString fill MEMBER fill CONSTANT FINAL)
    Q_PROPERTY(QString stroke MEMBER stroke CONSTANT FINAL)
    Q_PROPERTY(double strokeWidth MEMBER strokeWidth CONSTANT FINAL)

public:
    QString fill;
    QString stroke;
    double strokeWidth = 0;
};

// Kelo's own small icons, one per symbol name the island uses ("bell.fill", "gearshape", …).
class Icons : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // The side of the square the icons are drawn on.
    Q_PROPERTY(double viewBox READ viewBox CONSTANT FINAL)

public:
    [[nodiscard]] static constexpr double viewBox() { return 24; }

    explicit Icons(QObject* parent = nullptr)
        : QObject(parent) {}

    // An unknown name has an empty shape.
    Q_INVOKABLE [[nodiscard]] static kelo::views::IconShape shape(const QString& name);
    [[nodiscard]] static QStringList names();
    // The icon as an image for widgets (menus), `pixels` square.
    [[nodiscard]] static QImage image(const QString& name, const QColor& tint, int pixels);
};

} // namespace kelo::views
