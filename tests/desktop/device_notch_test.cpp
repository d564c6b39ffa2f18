#include "device_notch.h"

#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <fstream>

namespace kelo::shell {

class DeviceNotchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deviceNotchHeight_data() {
        QTest::addColumn<QByteArray>("module");    // the driver showing the notch, if any
        QTest::addColumn<QByteArray>("showNotch"); // its show_notch parameter
        QTest::addColumn<QByteArray>("node");      // the device-tree node, if any
        QTest::addColumn<QByteArray>("height");    // its apple,notch-height property
        QTest::addColumn<int>("expected");         // -1: no notch
        const QByteArray drm = "appledrm", yes = "Y\n", dcp = "dcp@38bc00000";
        const QByteArray h74("\0\0\0\x4a", 4);
        QTest::newRow("shown") << drm << yes << dcp << h74 << 74;
        QTest::newRow("big endian") << drm << yes << dcp << QByteArray("\0\0\x01\x02", 4) << 258;
        QTest::newRow("older driver name")
            << QByteArray("apple_dcp") << yes << QByteArray("dcp@231c00000")
            << QByteArray("\0\0\0\x40", 4) << 64;
        QTest::newRow("no driver parameter") << QByteArray() << yes << dcp << h74 << -1;
        QTest::newRow("hidden by the driver") << drm << QByteArray("N\n") << dcp << h74 << -1;
        QTest::newRow("external display port")
            << drm << yes << QByteArray("dcpext0@22c000000") << h74 << -1;
        QTest::newRow("too short") << drm << yes << dcp << QByteArray("\0\x4a", 2) << -1;
        QTest::newRow("zero") << drm << yes << dcp << QByteArray("\0\0\0\0", 4) << -1;
        QTest::newRow("little endian") << drm << yes << dcp << QByteArray("\x4a\0\0\0", 4) << -1;
        QTest::newRow("no device tree") << drm << yes << QByteArray() << h74 << -1;
    }

    void deviceNotchHeight() {
        QFETCH(QByteArray, module);
        QFETCH(QByteArray, showNotch);
        QFETCH(QByteArray, node);
        QFETCH(QByteArray, height);
        QFETCH(int, expected);
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        const std::filesystem::path root = folder.path().toStdString();
        const auto write = [&](const std::filesystem::path& relative, const QByteArray& bytes) {
            std::filesystem::create_directories((root / relative).parent_path());
            std::ofstream(root / relative, std::ios::binary).write(bytes.data(), bytes.size());
        };
        if (!module.isEmpty()) {
            write("sys/module/" + module.toStdString() + "/parameters/show_notch", showNotch);
        }
        if (!node.isEmpty()) {
            write("dt/soc/" + node.toStdString() + "/apple,notch-height", height);
        }
        const auto found = shell::deviceNotchHeight({root / "sys", root / "dt"});
        QCOMPARE(found, expected < 0 ? std::nullopt : std::optional(expected));
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::DeviceNotchTest)
#include "device_notch_test.moc"
