#include "scratch.h"

#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using kelo::testing::Rig;

namespace kelo {

namespace {

// Starts a model on a settings file holding exactly these lines.
std::unique_ptr<IslandModel> modelWithSettings(Rig& rig, const QByteArray& lines) {
    QFile file(rig.settingsFile());
    if (!file.open(QIODevice::WriteOnly) || file.write("[General]\n" + lines) < 0) {
        return nullptr;
    }
    file.close();
    return rig.makeModel();
}

QVariant stored(const Rig& rig, const QString& key) {
    return QSettings(rig.settingsFile(), QSettings::IniFormat).value(key);
}

} // namespace

// IslandModel: the user's preferences, read once and written on every assignment.
class IslandPreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void read_data() {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<IslandTheme>("theme");
        QTest::addColumn<GlassLook>("look");
        QTest::addColumn<bool>("sound");
        const auto standard = IslandTheme::Standard, glass = IslandTheme::Glass;
        const auto system = GlassLook::System;
        QTest::newRow("nothing stored") << QByteArray() << standard << system << true;
        QTest::newRow("glass") << "theme=glass\n"_ba << glass << system << true;
        QTest::newRow("Glass is not glass") << "theme=Glass\n"_ba << standard << system << true;
        QTest::newRow("light") << "glassLook=light\n"_ba << standard << GlassLook::Light << true;
        QTest::newRow("dark") << "glassLook=dark\n"_ba << standard << GlassLook::Dark << true;
        QTest::newRow("unknown look") << "glassLook=sepia\n"_ba << standard << system << true;
        QTest::newRow("sound off") << "reminderSound=false\n"_ba << standard << system << false;
        QTest::newRow("sound on") << "reminderSound=true\n"_ba << standard << system << true;
        QTest::newRow("a number is no boolean")
            << "reminderSound=0\n"_ba << standard << system << true;
        QTest::newRow("a word is no boolean")
            << "reminderSound=no\n"_ba << standard << system << true;
    }

    void read() {
        QFETCH(QByteArray, lines);
        Rig rig;
        const auto model = modelWithSettings(rig, lines);
        QVERIFY(model);
        QTEST(model->theme(), "theme");
        QTEST(model->glassLook(), "look");
        QTEST(model->reminderSound(), "sound");
    }

    void everyAssignmentIsWritten() {
        Rig rig;
        QSignalSpy theme(rig.model.get(), &IslandModel::themeChanged);
        rig.model->setTheme(IslandTheme::Standard);
        rig.model->setGlassLook(GlassLook::System);
        rig.model->setReminderSound(true);
        QCOMPARE(theme.count(), 0);
        QCOMPARE(stored(rig, u"theme"_s), u"standard"_s);
        QCOMPARE(stored(rig, u"glassLook"_s), u"system"_s);
        QCOMPARE(stored(rig, u"reminderSound"_s), u"true"_s);

        rig.model->setTheme(IslandTheme::Glass);
        rig.model->setGlassLook(GlassLook::Dark);
        rig.model->setReminderSound(false);
        const auto next = rig.makeModel();
        QCOMPARE(next->theme(), IslandTheme::Glass);
        QCOMPARE(next->glassLook(), GlassLook::Dark);
        QCOMPARE(next->reminderSound(), false);
    }

    void anIsolatedModelWritesNothing() {
        Rig rig;
        const auto model = modelWithSettings(rig, "theme=standard\n");
        QVERIFY(model);
        model->setIsolated(true);
        model->setTheme(IslandTheme::Glass);
        model->setGlassLook(GlassLook::Light);
        model->setReminderSound(false);
        QCOMPARE(model->theme(), IslandTheme::Glass);
        QCOMPARE(stored(rig, u"theme"_s), u"standard"_s);
        QCOMPARE(stored(rig, u"glassLook"_s), QVariant());
        QCOMPARE(stored(rig, u"reminderSound"_s), QVariant());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandPreferencesTest)
#include "island_preferences_test.moc"
