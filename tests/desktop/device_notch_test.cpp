#include "device_notch.h"

#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <string>

namespace kelo::shell {

// Builds a fake /sys and /proc/device-tree in a temporary folder.
class FakeTree {
public:
    FakeTree() { QVERIFY(folder_.isValid()); }

    [[nodiscard]] DeviceTreeRoots roots() const { return {root() / "sys", root() / "dt"}; }

    void write(const std::filesystem::path& relative, const std::string& bytes) const {
        const auto file = root() / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
    void showNotch(const char* module, const char* value) const {
        write(std::filesystem::path("sys/module") / module / "parameters/show_notch", value);
    }
    void notchHeight(const char* node, std::string bytes) const {
        write(std::filesystem::path("dt/soc") / node / "apple,notch-height", bytes);
    }

private:
    [[nodiscard]] std::filesystem::path root() const { return folder_.path().toStdString(); }
    QTemporaryDir folder_;
};

class DeviceNotchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsTheHeightWhenTheDriverShowsTheNotch() {
        FakeTree tree;
        tree.showNotch("appledrm", "Y\n");
        tree.notchHeight("dcp@38bc00000", std::string("\0\0\0\x4a", 4));
        QCOMPARE(deviceNotchHeight(tree.roots()), std::optional<int>(74));
    }

    void readsTheHeightAsBigEndian() {
        FakeTree tree;
        tree.showNotch("appledrm", "Y\n");
        tree.notchHeight("dcp@38bc00000", std::string("\0\0\x01\x02", 4));
        QCOMPARE(deviceNotchHeight(tree.roots()), std::optional<int>(258));
    }

    void acceptsTheOlderDriverName() {
        FakeTree tree;
        tree.showNotch("apple_dcp", "Y\n");
        tree.notchHeight("dcp@231c00000", std::string("\0\0\0\x40", 4));
        QCOMPARE(deviceNotchHeight(tree.roots()), std::optional<int>(64));
    }

    void noNotchWhileTheDriverHidesIt() {
        FakeTree tree;
        tree.notchHeight("dcp@38bc00000", std::string("\0\0\0\x4a", 4));
        QVERIFY(!deviceNotchHeight(tree.roots()));
        tree.showNotch("appledrm", "N\n");
        QVERIFY(!deviceNotchHeight(tree.roots()));
    }

    void ignoresExternalDisplayPorts() {
        FakeTree tree;
        tree.showNotch("appledrm", "Y\n");
        tree.notchHeight("dcpext0@22c000000", std::string("\0\0\0\x4a", 4));
        QVERIFY(!deviceNotchHeight(tree.roots()));
    }

    void rejectsDamagedProperties() {
        FakeTree tree;
        tree.showNotch("appledrm", "Y\n");
        tree.notchHeight("dcp@1", std::string("\0\x4a", 2));
        QVERIFY(!deviceNotchHeight(tree.roots()));
        tree.notchHeight("dcp@1", std::string("\0\0\0\0", 4));
        QVERIFY(!deviceNotchHeight(tree.roots()));
        tree.notchHeight("dcp@1", std::string("\x4a\0\0\0", 4));
        QVERIFY(!deviceNotchHeight(tree.roots()));
    }

    void noDeviceTreeAtAll() {
        FakeTree tree;
        tree.showNotch("appledrm", "Y\n");
        QVERIFY(!deviceNotchHeight(tree.roots()));
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::DeviceNotchTest)
#include "device_notch_test.moc"
