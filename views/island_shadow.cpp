#include "island_shadow.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGNinePatchNode>
#include <QSGTexture>
#include <vector>

namespace kelo::views {

namespace {

// A blur of radius 18 is about a Gaussian of σ 9, which three box blurs of radius 9 approach;
// it fades out within 3σ.
constexpr int boxRadius = 9;
constexpr int boxPasses = 3;
constexpr int blurReach = 3 * boxRadius;
// The body's rounded bottom corners.
constexpr int cornerRadius = 24;
// Padding of the nine-patch: the blur and the corner fit inside it.
constexpr int patch = blurReach + cornerRadius;
constexpr int pictureSize = 2 * patch + 8;

void boxBlur(std::vector<float>& alpha, int width, int height, bool horizontal) {
    std::vector<float> out(alpha.size());
    const int lines = horizontal ? height : width;
    const int length = horizontal ? width : height;
    const auto at = [&](int line, int i) -> float& {
        return horizontal ? alpha[std::size_t(line * width + i)]
                          : alpha[std::size_t(i * width + line)];
    };
    for (int line = 0; line < lines; ++line) {
        for (int i = 0; i < length; ++i) {
            float sum = 0;
            for (int k = -boxRadius; k <= boxRadius; ++k) {
                const int j = i + k;
                sum += j >= 0 && j < length ? at(line, j) : 0.0F;
            }
            const std::size_t index =
                horizontal ? std::size_t(line * width + i) : std::size_t(i * width + line);
            out[index] = sum / float(2 * boxRadius + 1);
        }
    }
    alpha.swap(out);
}

} // namespace

IslandShadow::IslandShadow(QQuickItem* parent)
    : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

double IslandShadow::spread() {
    return blurReach;
}

QImage IslandShadow::picture() {
    QImage shape(pictureSize, pictureSize, QImage::Format_Alpha8);
    shape.fill(0);
    {
        QPainter painter(&shape);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath body;
        const QRectF rect(blurReach, blurReach, pictureSize - 2 * blurReach,
                          pictureSize - 2 * blurReach);
        body.addRoundedRect(rect, cornerRadius, cornerRadius);
        painter.fillPath(body, Qt::black);
    }
    std::vector<float> alpha(std::size_t(pictureSize * pictureSize));
    for (int y = 0; y < pictureSize; ++y) {
        for (int x = 0; x < pictureSize; ++x) {
            alpha[std::size_t(y * pictureSize + x)] = float(shape.constScanLine(y)[x]);
        }
    }
    for (int pass = 0; pass < boxPasses; ++pass) {
        boxBlur(alpha, pictureSize, pictureSize, true);
        boxBlur(alpha, pictureSize, pictureSize, false);
    }
    QImage picture(pictureSize, pictureSize, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pictureSize; ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < pictureSize; ++x) {
            line[x] = qRgba(0, 0, 0, qRound(alpha[std::size_t(y * pictureSize + x)]));
        }
    }
    return picture;
}

QSGNode* IslandShadow::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    auto* patchNode = static_cast<QSGNinePatchNode*>(node);
    if (!patchNode) {
        patchNode = window()->createNinePatchNode();
        static const QImage image = picture();
        patchNode->setTexture(window()->createTextureFromImage(image));
        patchNode->setPadding(patch, patch, patch, patch);
    }
    patchNode->setBounds(boundingRect().adjusted(-blurReach, -blurReach, blurReach, blurReach));
    patchNode->setDevicePixelRatio(1);
    patchNode->update();
    return patchNode;
}

} // namespace kelo::views
