#include "island_frame.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QTest>
#include <QWindow>

namespace kelo::shell {

// The frame's timing rules on the offscreen platform.
class IslandFrameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = std::make_unique<QWindow>();
        host_ = std::make_unique<QQuickItem>();
        host_->setSize(QSizeF(705, 520));
        frame_ = new IslandFrame(*window_, *host_);
        frame_->setScreen(QGuiApplication::primaryScreen());
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

    void growsAtOnceShrinksLaterAndCentresTheHost_data() {
        QTest::addColumn<QList<QSize>>("applied");
        QTest::addColumn<QSize>("atOnce");
        QTest::addColumn<QSize>("later");
        const QSize open(705, 160), closed(197, 24);
        QTest::newRow("grows") << QList{closed, QSize(385, 54)} << QSize(385, 54) << QSize(385, 54);
        QTest::newRow("shrinks") << QList{open, closed} << open << closed;
        QTest::newRow("growing again cancels the shrink")
            << QList{open, closed, open} << open << open;
        QTest::newRow("narrower but taller grows first")
            << QList{QSize(445, 78), QSize(385, 100)} << QSize(445, 100) << QSize(385, 100);
        QTest::newRow("a change within the delay starts over")
            << QList{open, QSize(385, 54), closed} << open << closed;
    }

    void growsAtOnceShrinksLaterAndCentresTheHost() {
        QFETCH(QList<QSize>, applied);
        QFETCH(QSize, atOnce);
        QFETCH(QSize, later);
        for (const QSize size : applied) {
            frame_->apply(size);
        }
        QCOMPARE(window_->geometry().size(), atOnce);
        QTRY_COMPARE_WITH_TIMEOUT(window_->geometry().size(), later, 5000);
        QTest::qWait(2 * IslandFrame::shrinkDelay.count());
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const QPoint topCentre(screen.x() + (screen.width() - later.width()) / 2, screen.y());
        QCOMPARE(window_->geometry(), QRect(topCentre, later));
        QCOMPARE(host_->position(), QPointF((later.width() - 705) / 2.0, 0)); // host centred
    }

private:
    std::unique_ptr<QWindow> window_;
    std::unique_ptr<QQuickItem> host_;
    IslandFrame* frame_ = nullptr;
};

} // namespace kelo::shell

QTEST_MAIN(kelo::shell::IslandFrameTest)
#include "island_frame_test.moc"
