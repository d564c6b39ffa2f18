#include "startup.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

namespace kelo::shell {
namespace {

// Stands for a variable that is not set at all, as opposed to one set to "".
const QByteArray unset = "<unset>";

void assign(const char* name, const QByteArray& value) {
    value == unset ? void(qunsetenv(name)) : void(qputenv(name, value));
}
QByteArray current(const char* name) {
    return qEnvironmentVariableIsSet(name) ? qgetenv(name) : unset;
}

// Sets or clears a variable for one test and restores it afterwards.
struct ScopedVariable {
    ScopedVariable(const char* name, const QByteArray& value)
        : name(name)
        , saved(current(name)) {
        assign(name, value);
    }
    ~ScopedVariable() { assign(name, saved); }
    const char* name;
    QByteArray saved;
};

std::optional<CommandLineAnswer> answer(std::initializer_list<const char*> arguments) {
    std::vector<const char*> argv{"kelo"};
    argv.insert(argv.end(), arguments);
    return answerCommandLine(static_cast<int>(argv.size()), argv.data());
}

} // namespace

class StartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void versionAndHelpAnswerAndNothingElseDoes() {
        const auto version = answer({"--version"});
        QVERIFY(version);
        QCOMPARE(version->text, std::string("kelo " KELO_VERSION "\n"));
        QCOMPARE(version->status, 0);
        const auto help = answer({"--help"});
        QVERIFY(help);
        QCOMPARE(help->status, 0);
        QVERIFY(help->text.starts_with("Usage: kelo\n"));
        QVERIFY(help->text.find("KELO_DATA") != std::string::npos);

        QVERIFY(!answer({}));
        QVERIFY(!answer({"--frobnicate"}));
        QVERIFY(!answer({"todos.json"}));
        QVERIFY(!answer({"--version", "--help"}));
    }

    void theDataFileFollowsKeloData() {
        const ScopedVariable dataHome("XDG_DATA_HOME", "/tmp/kelo-data-home");
        {
            const ScopedVariable data("KELO_DATA", unset);
            QCOMPARE(chooseDataFile(),
                     std::filesystem::path("/tmp/kelo-data-home/Kelo/todos.json"));
        }
        {
            const ScopedVariable data("KELO_DATA", ""); // empty, but still set
            QCOMPARE(chooseDataFile(), std::filesystem::current_path());
        }
        QTemporaryDir folder;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        const ScopedVariable data("KELO_DATA", "lists/todos.json");
        const auto chosen = chooseDataFile();
        QVERIFY(QDir::setCurrent(previous));
        QCOMPARE(QString::fromStdString(chosen.string()),
                 QDir(folder.path()).canonicalPath() + QStringLiteral("/lists/todos.json"));
    }

    void prepareQtEnvironment_data() {
        QTest::addColumn<QByteArray>("wayland");
        QTest::addColumn<QByteArray>("platform");
        QTest::addColumn<QByteArray>("backend");
        QTest::addColumn<QByteArray>("rhi");
        QTest::addColumn<QByteArray>("wantedPlatform");
        QTest::addColumn<QByteArray>("wantedBackend");
        const QByteArray wl = "wayland-0";
        QTest::newRow("Wayland runs through XWayland, software scene graph")
            << wl << unset << unset << unset << QByteArray("xcb") << QByteArray("software");
        QTest::newRow("the user's platform and backend are kept")
            << wl << QByteArray("wayland") << QByteArray("rhi") << unset << QByteArray("wayland")
            << QByteArray("rhi");
        QTest::newRow("X11 chooses no platform; an RHI choice means no backend")
            << unset << unset << unset << QByteArray("opengl") << unset << unset;
    }

    void prepareQtEnvironment() {
        QFETCH(QByteArray, wayland);
        QFETCH(QByteArray, platform);
        QFETCH(QByteArray, backend);
        QFETCH(QByteArray, rhi);
        const ScopedVariable a("WAYLAND_DISPLAY", wayland);
        const ScopedVariable b("QT_QPA_PLATFORM", platform);
        const ScopedVariable c("QT_QUICK_BACKEND", backend);
        const ScopedVariable d("QSG_RHI_BACKEND", rhi);
        shell::prepareQtEnvironment();
        QTEST(current("QT_QPA_PLATFORM"), "wantedPlatform");
        QTEST(current("QT_QUICK_BACKEND"), "wantedBackend");
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::StartupTest)
#include "startup_test.moc"
