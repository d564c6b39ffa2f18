#include "island_frame.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QTest>
#include <QWindow>

namespace kelo::shell {

// The frame's timing rules on the offscreen platform; the same rules on a real X server are
// covered by the desktop tests.
class IslandFrameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = std::make_unique<QWindow>();
        host_ = std::make_unique<QQuickItem>();
        host_->setSize(QSizeF(705, 520));
        frame_ = new IslandFrame(*window_, *host_);
        frame_->setScreen(QGuiApplication::primaryScreen());
        screen_ = QGuiApplication::primaryScreen()->geometry();
    }
    void cleanup() {
        host_.reset();
        window_.reset();
    }

    void withoutAScreenTheFrameIsLeftAlone() {
        window_->setGeometry(10, 20, 30, 40);
        frame_->setScreen(nullptr);
        frame_->apply(QSize(197, 24));
        QCOMPARE(window_->geometry(), QRect(10, 20, 30, 40));
    }

    void growsAtOnceAtTheTopCentre() {
        frame_->apply(QSize(197, 24));
        QCOMPARE(size(), QSize(197, 24));
        frame_->apply(QSize(385, 54));
        QCOMPARE(size(), QSize(385, 54));
        QCOMPARE(window_->y(), screen_.y());
        QCOMPARE(window_->x(), screen_.x() + (screen_.width() - 385) / 2);
    }

    void keepsTheHostCentredOnTheFrame() {
        frame_->apply(QSize(197, 24));
        QCOMPARE(host_->position(), QPointF((197 - 705) / 2.0, 0));
        frame_->apply(QSize(705, 160));
        QCOMPARE(host_->position(), QPointF(0, 0));
    }

    void shrinksOnlyAfterTheDelay() {
        frame_->apply(QSize(705, 160));
        frame_->apply(QSize(197, 24));
        QCOMPARE(size(), QSize(705, 160));
        QTRY_COMPARE_WITH_TIMEOUT(size(), QSize(197, 24), 5000);
        QCOMPARE(window_->x(), screen_.x() + (screen_.width() - 197) / 2);
    }

    void growingAgainCancelsThePendingShrink() {
        frame_->apply(QSize(705, 160));
        frame_->apply(QSize(197, 24));
        frame_->apply(QSize(705, 160));
        QTest::qWait(2 * IslandFrame::shrinkDelay.count());
        QCOMPARE(size(), QSize(705, 160));
    }

    void narrowerButTallerGrowsFirstAndNarrowsLater() {
        frame_->apply(QSize(445, 78));
        frame_->apply(QSize(385, 100));
        QCOMPARE(size(), QSize(445, 100));
        QTRY_COMPARE_WITH_TIMEOUT(size(), QSize(385, 100), 5000);
    }

    void aChangeWithinTheDelayStartsOverFromTheFrameAsItStands() {
        frame_->apply(QSize(705, 160));
        frame_->apply(QSize(385, 54));
        frame_->apply(QSize(197, 24));
        QCOMPARE(size(), QSize(705, 160));
        QTRY_COMPARE_WITH_TIMEOUT(size(), QSize(197, 24), 5000);
    }

private:
    [[nodiscard]] QSize size() const { return window_->geometry().size(); }

    std::unique_ptr<QWindow> window_;
    std::unique_ptr<QQuickItem> host_;
    IslandFrame* frame_ = nullptr;
    QRect screen_;
};

} // namespace kelo::shell

QTEST_MAIN(kelo::shell::IslandFrameTest)
#include "island_frame_test.moc"
