#include "startup.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <array>
#include <optional>

namespace kelo::shell {
namespace {

// Sets or clears a variable for one test and restores it afterwards.
class ScopedVariable {
public:
    ScopedVariable(const char* name, std::optional<QByteArray> value)
        : name_(name)
        , saved_(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt) {
        assign(value);
    }
    ~ScopedVariable() { assign(saved_); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void assign(const std::optional<QByteArray>& value) {
        if (value) {
            qputenv(name_, *value);
        } else {
            qunsetenv(name_);
        }
    }
    const char* name_;
    std::optional<QByteArray> saved_;
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
    void versionAndHelpAnswer() {
        const auto version = answer({"--version"});
        QVERIFY(version);
        QCOMPARE(version->text, std::string("kelo " KELO_VERSION "\n"));
        QCOMPARE(version->status, 0);

        const auto help = answer({"--help"});
        QVERIFY(help);
        QCOMPARE(help->status, 0);
        QVERIFY(help->text.starts_with("Usage: kelo\n"));
        QVERIFY(help->text.find("KELO_DATA") != std::string::npos);
    }

    void aNormalRunReadsNoArguments() {
        QVERIFY(!answer({}));
        QVERIFY(!answer({"--frobnicate"}));
        QVERIFY(!answer({"todos.json"}));
        QVERIFY(!answer({"--version", "--help"}));
    }

    void aRelativeDataFileIsTakenFromTheCurrentFolder() {
        QTemporaryDir folder;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        const ScopedVariable data("KELO_DATA", QByteArray("lists/todos.json"));
        const auto chosen = chooseDataFile();
        QVERIFY(QDir::setCurrent(previous));
        QCOMPARE(QString::fromStdString(chosen.string()),
                 QDir(folder.path()).canonicalPath() + QStringLiteral("/lists/todos.json"));
    }

    void anEmptyDataFileIsStillSet() {
        const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray("/tmp/kelo-data-home"));
        const ScopedVariable data("KELO_DATA", QByteArray());
        QCOMPARE(chooseDataFile(), std::filesystem::current_path());
    }

    void withoutKeloDataTheStoreDefaultIsUsed() {
        const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray("/tmp/kelo-data-home"));
        const ScopedVariable data("KELO_DATA", std::nullopt);
        QCOMPARE(chooseDataFile(), std::filesystem::path("/tmp/kelo-data-home/Kelo/todos.json"));
    }

    void waylandSessionsRunThroughXWayland() {
        const ScopedVariable wayland("WAYLAND_DISPLAY", QByteArray("wayland-0"));
        const ScopedVariable platform("QT_QPA_PLATFORM", std::nullopt);
        prepareQtEnvironment();
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
    }

    void theUsersPlatformIsKept() {
        const ScopedVariable wayland("WAYLAND_DISPLAY", QByteArray("wayland-0"));
        const ScopedVariable platform("QT_QPA_PLATFORM", QByteArray("wayland"));
        prepareQtEnvironment();
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("wayland"));
    }

    void anX11SessionChoosesNoPlatform() {
        const ScopedVariable wayland("WAYLAND_DISPLAY", std::nullopt);
        const ScopedVariable platform("QT_QPA_PLATFORM", std::nullopt);
        prepareQtEnvironment();
        QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    }

    void theSoftwareSceneGraphUnlessTheUserChoseOne() {
        {
            const ScopedVariable backend("QT_QUICK_BACKEND", std::nullopt);
            const ScopedVariable rhi("QSG_RHI_BACKEND", std::nullopt);
            prepareQtEnvironment();
            QCOMPARE(qgetenv("QT_QUICK_BACKEND"), QByteArray("software"));
        }
        {
            const ScopedVariable backend("QT_QUICK_BACKEND", QByteArray("rhi"));
            prepareQtEnvironment();
            QCOMPARE(qgetenv("QT_QUICK_BACKEND"), QByteArray("rhi"));
        }
        {
            const ScopedVariable backend("QT_QUICK_BACKEND", std::nullopt);
            const ScopedVariable rhi("QSG_RHI_BACKEND", QByteArray("opengl"));
            prepareQtEnvironment();
            QVERIFY(!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"));
        }
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::StartupTest)
#include "startup_test.moc"
