#include <QDir>
#include <QFile>
#include <QFileInfo>
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
        // Refreshing never registers.
        login.item.refreshStaleEntry();
        QVERIFY(!QFile::exists(login.item.entryPath()));
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

    void refreshStaleEntry_data() {
        // `program` lies in a scratch folder and exists when `present`; @exec@ in `entry` stands
        // for its Exec= value.
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("present");
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<bool>("refreshed");
        const QByteArray plain = "[Desktop Entry]\nType=Application\nExec=@exec@\n";
        QTest::newRow("program moved away") << u"build/shell/kelo"_s << false << plain << true;
        QTest::newRow("program in place") << u"bin/kelo"_s << true << plain << false;
        QTest::newRow("odd name in place")
            << u"My $Apps \"1\"/100% kelo"_s << true << plain << false;
        QTest::newRow("with an argument")
            << u"bin/kelo"_s << true << QByteArray("[Desktop Entry]\nExec=@exec@ --x\n") << false;
        QTest::newRow("a folder, not a program") << u"autostart"_s << false << plain << true;
        QTest::newRow("switched off")
            << u"gone/kelo"_s << false << QByteArray("[Desktop Entry]\nExec=@exec@\nHidden=true\n")
            << false;
        QTest::newRow("found on the PATH")
            << QString() << false << QByteArray("[Desktop Entry]\nExec=sh -c true\n") << false;
        QTest::newRow("no Exec") << QString() << false << QByteArray("[Desktop Entry]\n") << true;
        QTest::newRow("broken quoting")
            << QString() << false << QByteArray("[Desktop Entry]\nExec=\"/bin/sh\n") << true;
    }

    void refreshStaleEntry() {
        QFETCH(QString, program);
        QFETCH(bool, present);
        QFETCH(QByteArray, entry);
        QFETCH(bool, refreshed);
        QTemporaryDir home;
        const QString path = home.filePath(program);
        if (present) {
            QVERIFY(QDir().mkpath(QFileInfo(path).path()));
            QVERIFY(writeFile(path, "#!/bin/sh\n"));
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        }
        Item login(home.filePath(u"autostart"_s));
        QVERIFY(QDir().mkpath(home.filePath(u"autostart"_s)));
        const QByteArray before = entry.replace("@exec@", LaunchAtLogin::execValue(path).toUtf8());
        QVERIFY(writeFile(login.item.entryPath(), before));

        login.item.refreshStaleEntry();
        QFile file(login.item.entryPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray after = file.readAll();
        QCOMPARE(after.contains("\nExec=/opt/kelo/bin/kelo\n"), refreshed);
        if (!refreshed) {
            QCOMPARE(after, before);
        }
        QVERIFY(login.log.empty());
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
        QTest::newRow("tab") << u"/opt/a\tb/kelo"_s << u"\"/opt/a\\tb/kelo\""_s;
    }

    // Both ways: the value written for a program, and the program read back from it.
    void execValue() {
        QFETCH(QString, program);
        QFETCH(QString, exec);
        QCOMPARE(LaunchAtLogin::execValue(program), exec);
        QCOMPARE(LaunchAtLogin::execProgram(exec), program);
        QCOMPARE(LaunchAtLogin::execProgram(exec % u" --an-argument"_s), program);
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::LaunchAtLoginTest)
#include "launch_at_login_test.moc"
