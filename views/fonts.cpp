#include "fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <system_log.h>

using namespace Qt::StringLiterals;

namespace kelo::views {

Fonts::Fonts(QObject* parent)
    : QObject(parent) {
    const int id = QFontDatabase::addApplicationFont(u":/kelo/fonts/KeloRounded-Bold.ttf"_s);
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty()) {
        systemLog("Kelo: could not load the rounded font; numbers use the UI font.");
        rounded_ = QGuiApplication::font().family();
        return;
    }
    rounded_ = families.first();
}

} // namespace kelo::views
