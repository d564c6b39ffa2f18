#include "startup.h"

#include "todo_store.h"

#include <QByteArray>
#include <QtGlobal>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace kelo::shell {

std::optional<CommandLineAnswer> answerCommandLine(int argc, const char* const* argv) {
    if (argc != 2) {
        return std::nullopt;
    }
    const std::string_view argument = argv[1];
    if (argument == "--add") {
        return CommandLineAnswer{"Usage: kelo --add LINE, e.g. kelo --add \"dentist fri 3pm\"\n",
                                 2};
    }
    if (argument == "--version") {
        return CommandLineAnswer{"kelo " KELO_VERSION "\n", 0};
    }
    if (argument == "--help") {
        return CommandLineAnswer{
            "Usage: kelo\n"
            "       kelo --toggle\n"
            "       kelo --add LINE\n"
            "A to-do island at the top centre of the screen, over the camera notch.\n"
            "Ctrl+Alt+T opens and closes it from any application.\n"
            "\n"
            "  --toggle       open or close the island of the running Kelo, as Ctrl+Alt+T does\n"
            "  --add LINE     add a task to the running Kelo: kelo --add \"dentist fri 3pm\"\n"
            "\n"
            "Environment:\n"
            "  KELO_DATA      the data file (default: $XDG_DATA_HOME/Kelo/todos.json)\n",
            0};
    }
    return std::nullopt;
}

std::optional<RemoteRequest> remoteRequest(int argc, const char* const* argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--toggle") {
        return RemoteRequest{RemoteRequest::Kind::toggle, {}};
    }
    if (argc == 3 && std::string_view(argv[1]) == "--add") {
        return RemoteRequest{RemoteRequest::Kind::add, argv[2]};
    }
    return std::nullopt;
}

std::filesystem::path chooseDataFile() {
    if (const char* value = std::getenv("KELO_DATA")) {
        // An empty value is still set. As a path it names the current folder.
        std::error_code ec;
        const std::string_view path = value;
        const auto chosen =
            path.empty() ? std::filesystem::current_path(ec) : std::filesystem::absolute(path, ec);
        return ec ? std::filesystem::path(path) : chosen;
    }
    return TodoStore::defaultPath();
}

void prepareQtEnvironment() {
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("xcb"));
    }
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") &&
        !qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) {
        qputenv("QT_QUICK_BACKEND", QByteArrayLiteral("software"));
    }
}

} // namespace kelo::shell
