#include "scratch.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::Rig;

namespace kelo {

namespace {

// Puts a fresh model into the mode; an alert is raised the real way, by a due task and a tick.
void enter(Rig& rig, ModeKind kind) {
    switch (kind) {
    case ModeKind::Closed:
        break;
    case ModeKind::Peek:
        rig.model->set(Mode::peek());
        break;
    case ModeKind::Open:
        rig.model->open(false);
        break;
    case ModeKind::Alert:
        rig.addTask("standup", rig.today(), 9 * 60);
        rig.model->tick();
        break;
    }
}

// "in" and "out" move the pointer, "type" and "clear" edit the draft, "isolate" isolates the
// model; a number lets that many milliseconds pass.
void play(Rig& rig, const QString& script) {
    for (const QString& step : script.split(u' ', Qt::SkipEmptyParts)) {
        if (step == "in"_L1 || step == "out"_L1) {
            rig.model->hover(step == "in"_L1);
        } else if (step == "type"_L1 || step == "clear"_L1) {
            rig.model->setDraft(step == "type"_L1 ? u"buy"_s : QString());
        } else if (step == "isolate"_L1) {
            rig.model->setIsolated(true);
        } else {
            rig.time.advance(std::chrono::milliseconds(step.toInt()));
        }
    }
}

} // namespace

// IslandModel: its state, the mode machine with its delays, and navigation.
class IslandModesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void modeMachine_data() {
        QTest::addColumn<ModeKind>("start");
        QTest::addColumn<QString>("script");
        QTest::addColumn<ModeKind>("expected");
        QTest::addColumn<int>("haptics");
        const auto closed = ModeKind::Closed, peek = ModeKind::Peek, open = ModeKind::Open,
                   alert = ModeKind::Alert;
        const auto row = [](const char* name, ModeKind start, const char* script, ModeKind expected,
                            int haptics) {
            QTest::newRow(name) << start << QString::fromLatin1(script) << expected << haptics;
        };
        row("closed: resting 0.1 s peeks", closed, "in 100", peek, 1);
        row("closed: not yet at 99 ms", closed, "in 99", closed, 0);
        row("closed: leaving within 0.1 s", closed, "in 50 out 1000", closed, 0);
        row("closed: staying peeks once", closed, "in 100 5000", peek, 1);
        row("closed: isolated peeks silently", closed, "isolate in 100", peek, 0);
        row("peek: leaving closes at once", peek, "out", closed, 0);
        row("open idle: closes 0.7 s after leaving", open, "out 700", closed, 0);
        row("open idle: not at 699 ms", open, "out 699", open, 0);
        row("open idle: coming back in time", open, "out 600 in 5000", open, 0);
        row("open with a draft stays", open, "type in out 60000", open, 0);
        row("open: clearing the draft alone", open, "type in out 1000 clear 10000", open, 0);
        row("open: the next leave closes", open, "type out clear in out 700", closed, 0);
        row("alert: closes by itself after 12 s", alert, "12000", closed, 1);
        row("alert: still up at 11.999 s", alert, "11999", alert, 1);
        row("alert: resting keeps it past 12 s", alert, "1000 in 60000", alert, 1);
        row("alert: leaving closes 4 s later", alert, "in 60000 out 4000", closed, 1);
        row("alert: not at 3.999 s after leaving", alert, "in 60000 out 3999", alert, 1);
    }

    void modeMachine() {
        QFETCH(ModeKind, start);
        QFETCH(QString, script);
        Rig rig;
        enter(rig, start);
        QCOMPARE(rig.model->mode().kind(), start);
        play(rig, script);
        QTEST(rig.model->mode().kind(), "expected");
        QTEST(int(rig.platform.calls.count(u"haptic"_s)), "haptics");
    }

    void settingTheHeldModeOnlyCancelsPending() {
        Rig rig;
        rig.model->open(false);
        play(rig, u"out"_s);
        QSignalSpy modes(rig.model.get(), &IslandModel::modeChanged);
        const qint64 focus = rig.model->focusRequest();
        rig.model->set(Mode::open());
        rig.time.advance(5s);
        QCOMPARE(rig.model->mode(), Mode::open());
        QCOMPARE(modes.count(), 0);
        QCOMPARE(rig.model->focusRequest(), focus);
    }

    void openingFromAnAlertShowsToday_data() {
        QTest::addColumn<ModeKind>("start");
        QTest::addColumn<bool>("hotKey");
        QTest::addColumn<Bucket>("expected");
        QTest::newRow("click on an alert") << ModeKind::Alert << false << Bucket::today;
        QTest::newRow("click on the closed island")
            << ModeKind::Closed << false << Bucket::upcoming;
        QTest::newRow("click on a peek") << ModeKind::Peek << false << Bucket::upcoming;
        QTest::newRow("hot key on the closed island") << ModeKind::Closed << true << Bucket::today;
    }

    void openingFromAnAlertShowsToday() {
        QFETCH(ModeKind, start);
        QFETCH(bool, hotKey);
        Rig rig;
        enter(rig, start);
        rig.model->setBucket(Bucket::upcoming);
        hotKey ? rig.model->hotKey() : rig.model->open(false);
        QCOMPARE(rig.model->mode(), Mode::open());
        QTEST(rig.model->bucket(), "expected");
    }

    void hotKeyOpensOnTheTasksPageAndHandsBackOnce() {
        Rig rig;
        rig.platform.front = ApplicationRef{42};
        rig.model->open(false);
        rig.model->toggleSettings();
        rig.model->set(Mode::closed());
        rig.model->hotKey();
        QCOMPARE(rig.model->page(), Page::Tasks);
        rig.model->hotKey();
        QCOMPARE(rig.platform.calls.count(u"handBack 42"_s), 1);

        // A click does not remember the front application: closing only deactivates.
        rig.model->open(false);
        rig.platform.active = true;
        rig.model->set(Mode::closed());
        QCOMPARE(rig.platform.calls.count(u"handBack 42"_s), 1);
        QCOMPARE(rig.platform.calls.last(), u"deactivate"_s);
    }

    void givingTheKeyboardBack_data() {
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("panelKey");
        QTest::addColumn<std::optional<ApplicationRef>>("front");
        QTest::addColumn<bool>("accepts");
        QTest::addColumn<QStringList>("expected");
        const std::optional<ApplicationRef> other = ApplicationRef{42};
        const std::optional<ApplicationRef> none;
        const std::optional<ApplicationRef> self = testing::FakePlatform::self;
        QTest::newRow("the previous application takes it")
            << true << true << other << true << QStringList{u"handBack 42"_s};
        QTest::newRow("the previous application refuses")
            << true << true << other << false << QStringList{u"handBack 42"_s, u"deactivate"_s};
        QTest::newRow("Kelo itself was in front")
            << true << true << self << true << QStringList{u"deactivate"_s};
        QTest::newRow("no previous application")
            << true << false << none << true << QStringList{u"deactivate"_s};
        QTest::newRow("key panel of an inactive Kelo")
            << false << true << other << true << QStringList{u"releaseKeyboard"_s};
        QTest::newRow("nothing to give back") << false << false << other << true << QStringList();
    }

    void givingTheKeyboardBack() {
        QFETCH(bool, active);
        QFETCH(bool, panelKey);
        QFETCH(std::optional<ApplicationRef>, front);
        QFETCH(bool, accepts);
        Rig rig;
        rig.platform.front = front;
        rig.platform.acceptsHandBack = accepts;
        rig.model->open(true);
        rig.platform.active = active;
        rig.platform.panelKey = panelKey;
        rig.platform.calls.clear();
        rig.model->set(Mode::closed());
        QTEST(rig.platform.calls, "expected");
    }

    void isolatedOpeningTouchesNoDesktop() {
        Rig rig;
        rig.model->setIsolated(true);
        rig.model->hotKey();
        QCOMPARE(rig.model->mode(), Mode::open());
        QCOMPARE(rig.model->focusRequest(), 1);
        QVERIFY(rig.platform.calls.isEmpty());
    }

    void escapeSteps_data() {
        QTest::addColumn<bool>("settings");
        QTest::addColumn<bool>("scheduling");
        QTest::addColumn<QString>("draft");
        QTest::addColumn<ModeKind>("mode");
        QTest::addColumn<QString>("draftAfter");
        QTest::newRow("settings page") << true << true << u"x"_s << ModeKind::Open << u"x"_s;
        QTest::newRow("schedule editor") << false << true << u"x"_s << ModeKind::Open << u"x"_s;
        QTest::newRow("draft") << false << false << u"x"_s << ModeKind::Open << u""_s;
        QTest::newRow("nothing left") << false << false << u""_s << ModeKind::Closed << u""_s;
    }

    void escapeSteps() {
        QFETCH(bool, settings);
        QFETCH(bool, scheduling);
        QFETCH(QString, draft);
        Rig rig;
        const Todo task = rig.addTask("taxes");
        rig.model->open(false);
        rig.model->setDraft(draft);
        if (scheduling) {
            rig.model->setScheduling(task.id);
        }
        if (settings) {
            rig.model->toggleSettings();
        }
        rig.model->escape();
        QTEST(rig.model->mode().kind(), "mode");
        QTEST(rig.model->draft(), "draftAfter");
        QCOMPARE(rig.model->page(), Page::Tasks);
        QCOMPARE(rig.model->scheduling(), std::nullopt);
    }

    void endEditingGivesTheAddFieldTheKeyboard() {
        Rig rig;
        const qint64 focus = rig.model->focusRequest();
        rig.model->endEditing();
        QCOMPARE(rig.model->focusRequest(), focus);
        rig.model->setEditing(rig.addTask("taxes").id);
        rig.model->endEditing();
        QCOMPARE(rig.model->editing(), std::nullopt);
        QCOMPARE(rig.model->focusRequest(), focus + 1);
    }

    void leavingOpenEndsEditingButKeepsTheDraft() {
        Rig rig;
        const Todo task = rig.addTask("taxes");
        rig.model->open(false);
        rig.model->setDraft(u"buy milk"_s);
        rig.model->setEditing(task.id);
        rig.model->setScheduling(task.id);
        rig.model->set(Mode::closed());
        QCOMPARE(rig.model->editing(), std::nullopt);
        QCOMPARE(rig.model->scheduling(), std::nullopt);
        QCOMPARE(rig.model->draft(), u"buy milk"_s);
    }

    void changesCarryTheirSpring() {
        Rig rig;
        QList<Spring> seen;
        const auto record = [&] { seen << rig.model->spring(); };
        connect(rig.model.get(), &IslandModel::modeChanged, this, record);
        connect(rig.model.get(), &IslandModel::pageChanged, this, record);
        connect(rig.model.get(), &IslandModel::islandSizeChanged, this, record);
        connect(rig.model.get(), &IslandModel::bucketChanged, this, record);
        rig.model->open(false);        // mode, size, page already on tasks
        rig.model->toggleSettings();   // page
        rig.model->setOpenHeight(300); // size, drawn at once
        rig.model->selectBucket(island::BucketTab::Backlog);
        QCOMPARE(seen, (QList<Spring>{Spring::Island, Spring::Island, Spring::List, Spring::None,
                                      Spring::List}));
        QCOMPARE(rig.model->spring(), Spring::None);
    }

    void islandSize_data() {
        QTest::addColumn<ModeKind>("mode");
        QTest::addColumn<QSizeF>("notch");
        QTest::addColumn<double>("openHeight");
        QTest::addColumn<int>("tasksToday");
        QTest::addColumn<QSizeF>("expected");
        const QSizeF notch(185, 32);
        QTest::newRow("closed, nothing today")
            << ModeKind::Closed << notch << 120.0 << 0 << QSizeF(197, 32);
        QTest::newRow("closed, one task today")
            << ModeKind::Closed << notch << 120.0 << 1 << QSizeF(285, 32);
        QTest::newRow("peek") << ModeKind::Peek << notch << 120.0 << 0 << QSizeF(385, 62);
        QTest::newRow("open") << ModeKind::Open << notch << 300.0 << 0 << QSizeF(645, 300);
        QTest::newRow("open, capped at 480")
            << ModeKind::Open << notch << 700.0 << 0 << QSizeF(645, 480);
        QTest::newRow("alert, wide notch")
            << ModeKind::Alert << QSizeF(200, 38) << 120.0 << 0 << QSizeF(460, 92);
        QTest::newRow("alert, at least 440")
            << ModeKind::Alert << QSizeF(100, 30) << 120.0 << 0 << QSizeF(440, 84);
    }

    void islandSize() {
        QFETCH(ModeKind, mode);
        QFETCH(QSizeF, notch);
        QFETCH(double, openHeight);
        QFETCH(int, tasksToday);
        Rig rig;
        rig.model->setNotch(notch);
        rig.model->setOpenHeight(openHeight);
        if (tasksToday > 0) {
            rig.model->toggle(rig.addTask("done already", rig.today()));
        }
        rig.addTask("tomorrow's", Day::adding(1, rig.today()));
        enter(rig, mode);
        QTEST(rig.model->islandSize(), "expected");
    }

    void equalAssignmentsNotifyNobody_data() {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("bucket") << "bucket"_ba << QVariant::fromValue(island::BucketTab::Backlog);
        QTest::newRow("notch") << "notch"_ba << QVariant(QSizeF(200, 40));
        QTest::newRow("openHeight") << "openHeight"_ba << QVariant(333.0);
        QTest::newRow("draft") << "draft"_ba << QVariant(u"milk"_s);
        QTest::newRow("editing") << "editing"_ba
                                 << QVariant(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
        QTest::newRow("scheduling")
            << "scheduling"_ba << QVariant(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
        QTest::newRow("page") << "page"_ba << QVariant::fromValue(Page::Settings);
        QTest::newRow("theme") << "theme"_ba << QVariant::fromValue(IslandTheme::Glass);
        QTest::newRow("glassLook") << "glassLook"_ba << QVariant::fromValue(GlassLook::Dark);
        QTest::newRow("reminderSound") << "reminderSound"_ba << QVariant(false);
        QTest::newRow("isolated") << "isolated"_ba << QVariant(true);
    }

    void equalAssignmentsNotifyNobody() {
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        Rig rig;
        const QMetaObject& meta = IslandModel::staticMetaObject;
        const QMetaProperty metaProperty = meta.property(meta.indexOfProperty(property));
        QSignalSpy spy(rig.model.get(), metaProperty.notifySignal());
        QVERIFY(rig.model->setProperty(property, value));
        QCOMPARE(spy.count(), 1);
        QVERIFY(rig.model->setProperty(property, rig.model->property(property)));
        QCOMPARE(spy.count(), 1);
    }

    void derivedValuesNotifyOnlyRealChanges() {
        Rig rig;
        QSignalSpy size(rig.model.get(), &IslandModel::islandSizeChanged);
        QSignalSpy idle(rig.model.get(), &IslandModel::isIdleChanged);
        QSignalSpy plan(rig.model.get(), &IslandModel::planChanged);
        rig.model->setOpenHeight(400); // closed: neither depends on it
        QCOMPARE(size.count(), 0);
        QCOMPARE(plan.count(), 0);
        rig.model->setDraft(u"dentist"_s);
        rig.model->setDraft(u"dentist 5pm"_s); // still not idle, another plan
        QCOMPARE(idle.count(), 1);
        QCOMPARE(plan.count(), 2);
        QCOMPARE(size.count(), 0);
        rig.addTask("first of today", rig.today());
        QCOMPARE(size.count(), 1);
        rig.addTask("second of today", rig.today());
        QCOMPARE(size.count(), 1);
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandModesTest)
#include "island_modes_test.moc"
