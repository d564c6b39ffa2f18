#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace kelo::views {

// The island's fonts: the desktop's UI font for text, and Kelo Rounded (Quicksand with digits of
// equal width, built with Kelo) for counts and times.
class Fonts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // Kelo Rounded's family, or the UI font's when it could not be loaded.
    Q_PROPERTY(QString rounded READ rounded CONSTANT FINAL)

public:
    explicit Fonts(QObject* parent = nullptr);

    [[nodiscard]] QString rounded() const { return rounded_; }

private:
    QString rounded_;
};

} // namespace kelo::views
