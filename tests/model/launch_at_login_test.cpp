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

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class LaunchAtLoginTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void registerAndUnregister() {
        QTemporaryDir home;
        Item login(home.filePath(u"config/autostart"_s));
        QVERIFY(!login.item.isEnabled());
        login.item.set(true);
        QVERIFY(login.item.isEnabled());
        const QByteArray entry = readFile(home.filePath(u"config/autostart/kelo.desktop"_s));
        QVERIFY(entry.startsWith("[Desktop Entry]\n"));
        QVERIFY(entry.contains("\nExec=/opt/kelo/bin/kelo\n"));

        login.item.set(false);
        QVERIFY(!login.item.isEnabled());
        QVERIFY(!QFile::exists(login.item.entryPath()));
        login.item.set(false);
        QVERIFY(login.log.empty());
    }

    void hiddenEntries_data() {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("plain") << "[Desktop Entry]\nExec=kelo\n"_ba << true;
        QTest::newRow("hidden") << "[Desktop Entry]\nExec=kelo\nHidden = true\n"_ba << false;
        QTest::newRow("not hidden") << "[Desktop Entry]\nHidden=false\n"_ba << true;
        QTest::newRow("another group's key")
            << "[Desktop Entry]\n[Desktop Action x]\nHidden=true\n"_ba << true;
    }

    void hiddenEntries() {
        QFETCH(QByteArray, entry);
        QTemporaryDir folder;
        Item login(folder.path());
        QVERIFY(writeFile(login.item.entryPath(), entry));
        QTEST(login.item.isEnabled(), "enabled");
    }

    void registeringOverAHiddenEntryEnablesIt() {
        QTemporaryDir folder;
        Item login(folder.path());
        QVERIFY(writeFile(login.item.entryPath(), "[Desktop Entry]\nHidden=true\n"));
        login.item.set(true);
        QVERIFY(login.item.isEnabled());
    }

    void failuresAreLoggedOnce_data() {
        QTest::addColumn<bool>("on");
        QTest::newRow("register") << true;
        QTest::newRow("unregister") << false;
    }

    void failuresAreLoggedOnce() {
        QFETCH(bool, on);
        QTemporaryDir home;
        // The autostart folder is a regular file, and the entry a folder with something in it:
        // nothing can be created inside the one nor removed of the other.
        const QString folder = home.filePath(u"autostart"_s);
        Item login(folder);
        if (on) {
            QVERIFY(writeFile(folder, "not a folder"));
        } else {
            QVERIFY(QDir().mkpath(login.item.entryPath() % u"/inside"_s));
        }
        login.item.set(on);
        QCOMPARE(login.log.size(), 1u);
        QVERIFY(login.log[0].starts_with("Kelo: launch at login failed: "));
        QVERIFY(login.log[0].size() > std::string_view("Kelo: launch at login failed: ").size());
        QVERIFY(!login.item.isEnabled());
    }

    void followsXdgConfigHome() {
        QTemporaryDir config;
        qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
        QCOMPARE(LaunchAtLogin().entryPath(), config.filePath(u"autostart/kelo.desktop"_s));
        qputenv("XDG_CONFIG_HOME", "relative/config");
        QCOMPARE(LaunchAtLogin().entryPath(),
                 QDir::homePath() % u"/.config/autostart/kelo.desktop"_s);
        qunsetenv("XDG_CONFIG_HOME");
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
