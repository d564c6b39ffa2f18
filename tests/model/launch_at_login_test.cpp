#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <launch_at_login.h>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace kelo {

namespace {

// A login item in a scratch autostart folder, with its log lines kept.
struct Item {
    explicit Item(const QString& folder)
        : item(LaunchAtLogin::Options{folder, u"/opt/kelo/bin/kelo"_s,
                                      [this](std::string_view line) { log.emplace_back(line); }}) {}

    std::vector<std::string> log;
    LaunchAtLogin item;
};

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class LaunchAtLoginTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void registerAndUnregister() {
        QTemporaryDir home;
        Item login(home.filePath(u"config/autostart"_s));
        QVERIFY(!login.item.isEnabled());
        login.item.setEnabled(true);
        QVERIFY(login.item.isEnabled());
        QFile entry(home.filePath(u"config/autostart/kelo.desktop"_s));
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QByteArray text = entry.readAll();
        QVERIFY(text.startsWith("[Desktop Entry]\n"));
        QVERIFY(text.contains("\nExec=/opt/kelo/bin/kelo\n"));
        // Hidden=true means deleted; registering again replaces the entry.
        QVERIFY(writeFile(entry.fileName(), "[Desktop Entry]\nHidden = true\n"));
        QVERIFY(!login.item.isEnabled());
        login.item.setEnabled(true);
        QVERIFY(login.item.isEnabled());
        login.item.setEnabled(false);
        QVERIFY(!login.item.isEnabled());
        QVERIFY(!entry.exists());
        login.item.setEnabled(false);
        QVERIFY(login.log.empty());
    }

    void failuresAreLoggedOnce_data() {
        QTest::addColumn<bool>("on");
        QTest::newRow("register") << true;
        QTest::newRow("unregister") << false;
    }

    void failuresAreLoggedOnce() {
        QFETCH(bool, on);
        QTemporaryDir home;
        // The autostart folder is a regular file, or the entry a folder with something in it.
        const QString folder = home.filePath(u"autostart"_s);
        Item login(folder);
        QVERIFY(on ? writeFile(folder, "not a folder")
                   : QDir().mkpath(login.item.entryPath() % u"/inside"_s));
        login.item.setEnabled(on);
        QCOMPARE(login.log.size(), 1u);
        const std::string_view prefix = "Kelo: launch at login failed: ";
        QVERIFY(login.log[0].starts_with(prefix) && login.log[0].size() > prefix.size());
        QVERIFY(!login.item.isEnabled());
    }

    void execValue_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("exec");
        QTest::newRow("plain") << u"/usr/bin/kelo"_s << u"/usr/bin/kelo"_s;
        QTest::newRow("blank") << u"/opt/My Apps/kelo"_s << u"\"/opt/My Apps/kelo\""_s;
        QTest::newRow("dollar and quote")
            << u"/opt/a$b\"c/kelo"_s << u"\"/opt/a\\\\$b\\\\\"c/kelo\""_s;
        QTest::newRow("backslash") << u"/opt/a\\b/kelo"_s << u"\"/opt/a\\\\\\\\b/kelo\""_s;
        QTest::newRow("per cent") << u"/opt/100%/kelo"_s << u"/opt/100%%/kelo"_s;
    }

    void execValue() {
        QFETCH(QString, program);
        QTEST(LaunchAtLogin::execValue(program), "exec");
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::LaunchAtLoginTest)
#include "launch_at_login_test.moc"
