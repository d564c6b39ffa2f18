#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

struct sd_bus;

// Kelo's face on the session bus, for the programs that drive a running Kelo: `kelo --toggle`,
// `kelo --add` and `kelo-core add`. Plain C++ on sd-bus, so that kelo-core stays without Qt.
namespace kelo::bus {

struct SdBusLibrary;

inline constexpr const char* objectPath = "/org/kelo/Kelo";
inline constexpr const char* interfaceName = "org.kelo.Kelo1";

// The well-known name of the Kelo that holds `dataFile`: one name per data file, so that a
// scratch Kelo beside the user's own has a name of its own. It is "org.kelo.Kelo.d" followed by
// the 64-bit FNV-1a hash of the file's canonical path in 16 hexadecimal digits: a path itself may
// hold characters that a bus name may not, and may be longer than a bus name can be.
[[nodiscard]] std::string busName(const std::filesystem::path& dataFile);

// Why a call did not reach Kelo or Kelo refused it: one sentence.
struct Failure {
    std::string reason;
};

// A connection to the Kelo that holds one data file.
class RunningKelo {
public:
    // Connects to the session bus and finds the Kelo that owns the name of `dataFile`; a failure
    // when there is no session bus or no such Kelo.
    [[nodiscard]] static std::variant<RunningKelo, Failure>
    find(const std::filesystem::path& dataFile);

    ~RunningKelo();
    RunningKelo(RunningKelo&& other) noexcept;
    RunningKelo& operator=(RunningKelo&&) = delete;
    RunningKelo(const RunningKelo&) = delete;
    RunningKelo& operator=(const RunningKelo&) = delete;

    // Opens or closes the island, as the hot key does.
    [[nodiscard]] std::variant<std::monostate, Failure> toggle();
    // Opens the island with the add field taking the keyboard.
    [[nodiscard]] std::variant<std::monostate, Failure> openAdd();
    // Adds a task from a quick-add line as the add field of the Today tab does; the new task's
    // id, or an empty text when the line gave no task (a blank title).
    [[nodiscard]] std::variant<std::string, Failure> add(std::string_view line);

private:
    RunningKelo(const SdBusLibrary& sd, sd_bus* bus, std::string name);
    [[nodiscard]] std::variant<std::string, Failure> call(const char* method, const char* line);

    const SdBusLibrary& sd_;
    sd_bus* bus_ = nullptr;
    std::string name_;
};

} // namespace kelo::bus
