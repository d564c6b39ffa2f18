#include "scoped_variable.h"
#include "startup.h"

#include <QTest>
#include <optional>

namespace kelo::shell {
namespace {

using testing::scopedVariable;
using testing::Value;

const Value unset;

template <auto read> auto withArguments(std::initializer_list<const char*> arguments) {
    std::vector<const char*> all{"kelo"};
    all.insert(all.end(), arguments);
    return read(static_cast<int>(all.size()), all.data());
}
constexpr auto answer = withArguments<answerCommandLine>;
constexpr auto request = withArguments<remoteRequest>;

} // namespace

class StartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What --version and --help print is checked on the real program (test_bus).
    void onlyVersionAndHelpAreAnsweredHere() {
        QVERIFY(answer({"--version"}) && answer({"--help"}));
        QVERIFY(!answer({}));
        QVERIFY(!answer({"--frobnicate"}));
        QVERIFY(!answer({"todos.json"}));
        QVERIFY(!answer({"--version", "--help"}));
        QVERIFY(!answer({"--toggle"}));
        QCOMPARE(answer({"--add"})->status, 2); // the line is missing
    }

    void toggleAndAddGoToTheRunningKelo() {
        QCOMPARE(request({"--toggle"})->kind, RemoteRequest::Kind::toggle);
        const auto add = request({"--add", "dentist fri 3pm"});
        QVERIFY(add && add->kind == RemoteRequest::Kind::add);
        QCOMPARE(add->line, std::string("dentist fri 3pm"));
        QVERIFY(!request({}));
        QVERIFY(!request({"--add"}));
        QVERIFY(!request({"--toggle", "now"}));
        QVERIFY(!request({"--add", "a", "b"}));
    }

    void theDataFileFollowsKeloData() {
        const auto dataHome = scopedVariable("XDG_DATA_HOME", QByteArray("/tmp/kelo-data-home"));
        {
            const auto data = scopedVariable("KELO_DATA", unset);
            QCOMPARE(chooseDataFile(),
                     std::filesystem::path("/tmp/kelo-data-home/Kelo/todos.json"));
        }
        const auto data = scopedVariable("KELO_DATA", QByteArray("")); // empty, but still set
        QCOMPARE(chooseDataFile(), std::filesystem::current_path());
        // A relative KELO_DATA is checked on the real program (test_bus).
    }

    void prepareQtEnvironment_data() {
        QTest::addColumn<Value>("wayland");
        QTest::addColumn<Value>("platform");
        QTest::addColumn<Value>("backend");
        QTest::addColumn<Value>("rhi");
        QTest::addColumn<Value>("wantedPlatform");
        QTest::addColumn<Value>("wantedBackend");
        const Value wl = "wayland-0";
        QTest::newRow("Wayland runs through XWayland, software scene graph")
            << wl << unset << unset << unset << Value("xcb") << Value("software");
        QTest::newRow("the user's platform and backend are kept")
            << wl << Value("wayland") << Value("rhi") << unset << Value("wayland") << Value("rhi");
        QTest::newRow("X11 chooses no platform; an RHI choice means no backend")
            << unset << unset << unset << Value("opengl") << unset << unset;
    }

    void prepareQtEnvironment() {
        QFETCH(Value, wayland);
        QFETCH(Value, platform);
        QFETCH(Value, backend);
        QFETCH(Value, rhi);
        const auto a = scopedVariable("WAYLAND_DISPLAY", wayland);
        const auto b = scopedVariable("QT_QPA_PLATFORM", platform);
        const auto c = scopedVariable("QT_QUICK_BACKEND", backend);
        const auto d = scopedVariable("QSG_RHI_BACKEND", rhi);
        shell::prepareQtEnvironment();
        QTEST(testing::currentValue("QT_QPA_PLATFORM"), "wantedPlatform");
        QTEST(testing::currentValue("QT_QUICK_BACKEND"), "wantedBackend");
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::StartupTest)
#include "startup_test.moc"
