#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <launch_at_login.h>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace kelo {

// The login item in a scratch autostart folder, with its log lines kept.
class LaunchAtLoginTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> home_;
    std::vector<std::string> log_;
    std::unique_ptr<LaunchAtLogin> item_;

    QByteArray written() const {
        QFile file(item_->entryPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool writeFile(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        return QDir().mkpath(path.section(u'/', 0, -2)) && file.open(QIODevice::WriteOnly) &&
               file.write(bytes) == bytes.size();
    }

private Q_SLOTS:
    void init() {
        home_ = std::make_unique<QTemporaryDir>();
        log_.clear();
        item_ = std::make_unique<LaunchAtLogin>(
            LaunchAtLogin::Options{home_->filePath(u"config/autostart"_s), u"/opt/kelo/bin/kelo"_s,
                                   [this](std::string_view line) { log_.emplace_back(line); }});
    }

    // Registering and unregistering; then each failure logged once: the entry a folder with
    // something in it, the autostart folder a regular file.
    void registerAndUnregister() {
        QVERIFY(!item_->isEnabled());
        item_->refreshStaleEntry(); // never registers
        QVERIFY(!QFile::exists(item_->entryPath()));
        item_->setEnabled(true);
        QVERIFY(item_->isEnabled());
        QVERIFY(written().startsWith("[Desktop Entry]\n"));
        QVERIFY(written().contains("\nExec=/opt/kelo/bin/kelo\n"));
        // Hidden=true means deleted; registering again replaces the entry.
        QVERIFY(writeFile(item_->entryPath(), "[Desktop Entry]\nHidden = true\n"));
        QVERIFY(!item_->isEnabled());
        item_->setEnabled(true);
        QVERIFY(item_->isEnabled());
        item_->setEnabled(false);
        QVERIFY(!item_->isEnabled() && !QFile::exists(item_->entryPath()));
        item_->setEnabled(false);
        QVERIFY(log_.empty());
        QVERIFY(QDir().mkpath(item_->entryPath() % u"/inside"_s));
        item_->setEnabled(false);
        QCOMPARE(log_.size(), 1u);
        const QString folder = item_->entryPath().section(u'/', 0, -2);
        QVERIFY(QDir(folder).removeRecursively() && writeFile(folder, "not a folder"));
        item_->setEnabled(true);
        QVERIFY(!item_->isEnabled());
        QCOMPARE(log_.size(), 2u);
        const std::string_view prefix = "Kelo: launch at login failed: ";
        for (const std::string& line : log_) {
            QVERIFY(line.starts_with(prefix) && line.size() > prefix.size());
        }
    }

    // An entry that is on is refreshed when what its Exec= starts (@exec@, `program` in the
    // scratch folder, there when `present`) cannot run. Each entry is under "[Desktop Entry]".
    void refreshStaleEntry_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("present");
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<bool>("refreshed");
        const QByteArray plain = "Type=Application\nExec=@exec@";
        QTest::newRow("program moved away") << u"build/shell/kelo"_s << false << plain << true;
        QTest::newRow("program in place") << u"My $Apps/100% kelo"_s << true << plain << false;
        QTest::newRow("a folder, not a program") << u"config"_s << false << plain << true;
        QTest::newRow("switched off")
            << u"gone/kelo"_s << false << "Exec=@exec@\nHidden=true"_ba << false;
        QTest::newRow("found on the PATH") << QString() << false << "Exec=sh -c true"_ba << false;
        QTest::newRow("no Exec") << QString() << false << QByteArray() << true;
        QTest::newRow("broken quoting") << QString() << false << "Exec=\"/bin/sh"_ba << true;
    }

    void refreshStaleEntry() {
        QFETCH(QString, program);
        QFETCH(bool, present);
        QFETCH(QByteArray, entry);
        const QString path = home_->filePath(program);
        if (present) {
            QVERIFY(writeFile(path, "#!/bin/sh\n"));
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        }
        const QByteArray before =
            "[Desktop Entry]\n" % entry.replace("@exec@", LaunchAtLogin::execValue(path).toUtf8());
        QVERIFY(writeFile(item_->entryPath(), before));
        item_->refreshStaleEntry();
        const QByteArray after = written();
        QTEST(after.contains("\nExec=/opt/kelo/bin/kelo\n"), "refreshed");
        QVERIFY(after.contains("\nExec=/opt/kelo/bin/kelo\n") || after == before);
        QVERIFY(log_.empty());
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
