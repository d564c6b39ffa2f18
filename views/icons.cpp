#include "icons.h"

#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace kelo::views {

namespace {

const QString circleOutline = u"M 21 12 A 9 9 0 1 1 3 12 A 9 9 0 1 1 21 12 Z"_s;
const QString sunRays = u"M 19 12 L 21.6 12 M 16.95 16.95 L 18.79 18.79 M 12 19 L 12 21.6 "
                        u"M 7.05 16.95 L 5.21 18.79 M 5 12 L 2.4 12 M 7.05 7.05 L 5.21 5.21 "
                        u"M 12 5 L 12 2.4 M 16.95 7.05 L 18.79 5.21"_s;
// Eight teeth between radii 7.6 and 10.2.
const QString gearOutline =
    u"M 9.09 4.98 L 9.91 4.69 L 10.23 1.95 L 13.77 1.95 L 14.09 4.69 L 14.91 4.98 L 15.68 5.35 "
    u"L 17.85 3.64 L 20.36 6.15 L 18.65 8.32 L 19.02 9.09 L 19.31 9.91 L 22.05 10.23 "
    u"L 22.05 13.77 L 19.31 14.09 L 19.02 14.91 L 18.65 15.68 L 20.36 17.85 L 17.85 20.36 "
    u"L 15.68 18.65 L 14.91 19.02 L 14.09 19.31 L 13.77 22.05 L 10.23 22.05 L 9.91 19.31 "
    u"L 9.09 19.02 L 8.32 18.65 L 6.15 20.36 L 3.64 17.85 L 5.35 15.68 L 4.98 14.91 L 4.69 14.09 "
    u"L 1.95 13.77 L 1.95 10.23 L 4.69 9.91 L 4.98 9.09 L 5.35 8.32 L 3.64 6.15 L 6.15 3.64 "
    u"L 8.32 5.35 Z"_s;
const QString gearHole = u"M 15.2 12 A 3.2 3.2 0 1 1 8.8 12 A 3.2 3.2 0 1 1 15.2 12 Z"_s;
const QString calendarBody =
    u"M 5.5 5.5 H 18.5 Q 20 5.5 20 7 V 18.5 Q 20 20 18.5 20 H 5.5 Q 4 20 4 18.5 V 7 "
    u"Q 4 5.5 5.5 5.5 Z M 4 10 H 20 M 8 3.5 V 7 M 16 3.5 V 7"_s;

const QHash<QString, IconShape>& table() {
    static const QHash<QString, IconShape> shapes{
        {u"circle"_s, {{}, circleOutline, 1.8}},
        {u"checkmark"_s, {{}, u"M 5 12.5 L 10 17.5 L 19 7"_s, 2.8}},
        {u"checkmark.circle.fill"_s,
         {u"M 22 12 A 10 10 0 1 1 2 12 A 10 10 0 1 1 22 12 Z "
          u"M 6.7 11.9 L 10.2 15.4 L 17.3 8.3 L 18.9 9.9 L 10.2 18.6 L 5.1 13.5 Z"_s,
          {},
          0}},
        {u"plus"_s, {{}, u"M 12 4.5 V 19.5 M 4.5 12 H 19.5"_s, 2.6}},
        {u"chevron.left"_s, {{}, u"M 15 4.5 L 7.5 12 L 15 19.5"_s, 2.8}},
        {u"trash"_s,
         {{},
          u"M 4 6.5 H 20 M 9.5 6.5 V 4.5 H 14.5 V 6.5 M 6 6.5 L 7 20 H 17 L 18 6.5 "
          u"M 10 10 V 16.5 M 14 10 V 16.5"_s,
          1.8}},
        {u"tray.fill"_s,
         {u"M 3 13 L 5.5 5 H 18.5 L 21 13 V 18.5 Q 21 20 19.5 20 H 4.5 Q 3 20 3 18.5 Z "
          u"M 5.2 13 H 9 Q 9.5 15.5 12 15.5 Q 14.5 15.5 15 13 H 18.8 L 17 7 H 7 Z"_s,
          {},
          0}},
        {u"calendar"_s, {{}, calendarBody, 1.8}},
        {u"calendar.badge.clock"_s,
         {{},
          u"M 10 18 H 4.5 Q 3 18 3 16.5 V 6.5 Q 3 5 4.5 5 H 15.5 Q 17 5 17 6.5 V 10 "
          u"M 3 9 H 17 M 7 3 V 6 M 13 3 V 6 "
          u"M 22 17 A 5 5 0 1 1 12 17 A 5 5 0 1 1 22 17 Z M 17 14.5 V 17 L 18.8 18.2"_s,
          1.6}},
        {u"sun.max"_s, {{}, u"M 16 12 A 4 4 0 1 1 8 12 A 4 4 0 1 1 16 12 Z "_s + sunRays, 1.8}},
        {u"sun.max.fill"_s,
         {u"M 16.5 12 A 4.5 4.5 0 1 1 7.5 12 A 4.5 4.5 0 1 1 16.5 12 Z"_s, sunRays, 1.8}},
        {u"bell.fill"_s,
         {u"M 12 3 Q 13.2 3 13.4 4.2 Q 17.5 5.3 17.5 10 V 14 L 19.5 17 H 4.5 L 6.5 14 V 10 "
          u"Q 6.5 5.3 10.6 4.2 Q 10.8 3 12 3 Z "
          u"M 9.7 18.2 H 14.3 Q 14 20.5 12 20.5 Q 10 20.5 9.7 18.2 Z"_s,
          {},
          0}},
        {u"gearshape"_s, {{}, gearOutline + u' ' + gearHole, 1.6}},
        {u"gearshape.fill"_s, {gearOutline + u' ' + gearHole, {}, 0}},
    };
    return shapes;
}

} // namespace

IconShape Icons::shape(const QString& name) {
    return table().value(name);
}

QStringList Icons::names() {
    return table().keys();
}

QImage Icons::image(const QString& name, const QColor& tint, int pixels) {
    const IconShape icon = shape(name);
    const QString color = tint.name(QColor::HexRgb);
    QString svg = u"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'>"_s;
    if (!icon.fill.isEmpty()) {
        svg += u"<path fill-rule='evenodd' fill='%1' d='%2'/>"_s.arg(color, icon.fill);
    }
    if (!icon.stroke.isEmpty()) {
        svg += u"<path fill='none' stroke='%1' stroke-width='%2' stroke-linecap='round' "
               u"stroke-linejoin='round' d='%3'/>"_s.arg(color)
                   .arg(icon.strokeWidth)
                   .arg(icon.stroke);
    }
    svg += u"</svg>"_s;
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(svg.toUtf8());
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace kelo::views
