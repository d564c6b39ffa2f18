#include "scoped_variable.h"
#include "startup.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

Q_DECLARE_METATYPE(std::optional<QByteArray>)

namespace kelo::shell {
namespace {

using testing::ScopedVariable;
using Value = std::optional<QByteArray>;

const Value unset;

std::vector<const char*> argv(std::initializer_list<const char*> arguments) {
    std::vector<const char*> all{"kelo"};
    all.insert(all.end(), arguments);
    return all;
}

std::optional<CommandLineAnswer> answer(std::initializer_list<const char*> arguments) {
    const auto all = argv(arguments);
    return answerCommandLine(static_cast<int>(all.size()), all.data());
}

std::optional<RemoteRequest> request(std::initializer_list<const char*> arguments) {
    const auto all = argv(arguments);
    return remoteRequest(static_cast<int>(all.size()), all.data());
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
        const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray("/tmp/kelo-data-home"));
        {
            const ScopedVariable data("KELO_DATA", unset);
            QCOMPARE(chooseDataFile(),
                     std::filesystem::path("/tmp/kelo-data-home/Kelo/todos.json"));
        }
        {
            const ScopedVariable data("KELO_DATA", QByteArray("")); // empty, but still set
            QCOMPARE(chooseDataFile(), std::filesystem::current_path());
        }
        QTemporaryDir folder;
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        const ScopedVariable data("KELO_DATA", QByteArray("lists/todos.json"));
        const auto chosen = chooseDataFile();
        QVERIFY(QDir::setCurrent(previous));
        QCOMPARE(QString::fromStdString(chosen.string()),
                 QDir(folder.path()).canonicalPath() + QStringLiteral("/lists/todos.json"));
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
        const ScopedVariable a("WAYLAND_DISPLAY", wayland);
        const ScopedVariable b("QT_QPA_PLATFORM", platform);
        const ScopedVariable c("QT_QUICK_BACKEND", backend);
        const ScopedVariable d("QSG_RHI_BACKEND", rhi);
        shell::prepareQtEnvironment();
        QTEST(ScopedVariable::current("QT_QPA_PLATFORM"), "wantedPlatform");
        QTEST(ScopedVariable::current("QT_QUICK_BACKEND"), "wantedBackend");
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::StartupTest)
#include "startup_test.moc"
