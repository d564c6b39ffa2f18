#pragma once

#include <filesystem>
#include <optional>
#include <string>

// What Kelo settles before the application object exists.
namespace kelo::shell {

struct CommandLineAnswer {
    std::string text;
    int status = 0;
};

// The answer to "--help" or "--version" as the only argument, or to "--add" without its line;
// none otherwise.
[[nodiscard]] std::optional<CommandLineAnswer> answerCommandLine(int argc, const char* const* argv);

// A request for the Kelo that already runs with the data file: "kelo --toggle" opens or closes
// its island, "kelo --add LINE" adds a task to it.
struct RemoteRequest {
    enum class Kind { toggle, add };
    Kind kind = Kind::toggle;
    std::string line;
};

// None when the arguments ask for something else; a normal run reads no arguments.
[[nodiscard]] std::optional<RemoteRequest> remoteRequest(int argc, const char* const* argv);

// KELO_DATA when it is set, even to an empty value, taken relative to the current folder; else
// the store's default data file.
[[nodiscard]] std::filesystem::path chooseDataFile();

// Chooses Qt's platform and renderer where the user has not:
// - under Wayland, XWayland (the xcb platform), since a plain Wayland window can neither place
//   itself at the top of the screen nor stay above other windows;
// - the software scene graph, which starts faster and holds far less memory than a GPU context
//   for an island that redraws a few small shapes.
// Must run before the application object is created.
void prepareQtEnvironment();

} // namespace kelo::shell
