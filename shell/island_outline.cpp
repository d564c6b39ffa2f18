#include "island_outline.h"

#include <QTransform>

namespace kelo::shell {

QPainterPath islandOutline(QSizeF size, metrics::Radii radii) {
    const qreal w = size.width();
    const qreal h = size.height();
    const qreal t = radii.top;
    const qreal b = radii.bottom;
    QPainterPath path;
    path.moveTo(0, 0);
    path.quadTo(t, 0, t, t);
    path.lineTo(t, h - b);
    path.quadTo(t, h, t + b, h);
    path.lineTo(w - t - b, h);
    path.quadTo(w - t, h, w - t, h - b);
    path.lineTo(w - t, t);
    path.quadTo(w - t, 0, w, 0);
    path.closeSubpath();
    return path;
}

IslandRegions islandRegions(const IslandShapeFacts& facts) {
    const qreal left = (facts.windowWidth - facts.island.width()) / 2;
    QTransform toPixels;
    toPixels.scale(facts.devicePixelRatio, facts.devicePixelRatio);
    toPixels.translate(left, 0);
    const QPainterPath outline = islandOutline(facts.island, metrics::radii(facts.mode));
    const QRegion input(toPixels.map(outline).toFillPolygon().toPolygon(), Qt::WindingFill);
    if (!facts.composited) {
        return {input, input};
    }
    // The region holds the pixels whose centres the outline covers; the antialiased edge also
    // paints the pixels beside those.
    QRegion bounding =
        input + input.translated(-1, 0) + input.translated(1, 0) + input.translated(0, 1);
    if (facts.mode == ModeKind::Open) {
        const QSizeF room =
            facts.island + QSizeF(metrics::shadowMarginWidth, metrics::shadowMarginHeight);
        const QRectF shadow(-metrics::shadowMarginWidth / 2, 0, room.width(), room.height());
        bounding += toPixels.mapRect(shadow).toAlignedRect();
    }
    return {bounding, input};
}

} // namespace kelo::shell
