#include "running_kelo.h"

#include "sd_bus_library.h"

#include <cstdint>
#include <cstdio>
#include <system_error>

namespace kelo::bus {
namespace {

// Every call returns at once in Kelo; one that takes longer means a Kelo that hangs.
constexpr std::uint64_t callTimeoutMicroseconds = 10'000'000;

std::string describe(const SdBusLibrary& sd, const sd_bus_error& error, int status) {
    if (sd.errorIsSet(&error)) {
        return error.message ? error.message : error.name;
    }
    return std::system_category().message(-status);
}

struct ErrorGuard {
    const SdBusLibrary& sd;
    sd_bus_error error{}; // SD_BUS_ERROR_NULL, without its C compound literal
    ~ErrorGuard() { sd.errorFree(&error); }
};

struct MessageGuard {
    const SdBusLibrary& sd;
    sd_bus_message* message = nullptr;
    ~MessageGuard() { sd.unref(message); }
};

std::variant<std::monostate, Failure> withoutAnswer(std::variant<std::string, Failure> result) {
    if (auto* failure = std::get_if<Failure>(&result)) {
        return std::move(*failure);
    }
    return std::monostate{};
}

} // namespace

std::string busName(const std::filesystem::path& dataFile) {
    std::error_code ec;
    std::filesystem::path path = std::filesystem::absolute(dataFile, ec);
    if (!ec) {
        // A file not yet created still has a canonical folder.
        const auto canonical = std::filesystem::weakly_canonical(path, ec);
        if (!ec) {
            path = canonical;
        }
    }
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    for (const char c : path.string()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    return std::string("org.kelo.Kelo.d") + digits;
}

std::variant<RunningKelo, Failure> RunningKelo::find(const std::filesystem::path& dataFile) {
    const SdBusLibrary* sd = SdBusLibrary::get();
    if (!sd) {
        return Failure{"libsystemd.so.0, which talks to the session bus, cannot be loaded"};
    }
    sd_bus* bus = nullptr;
    if (const int status = sd->openUser(&bus); status < 0) {
        return Failure{"no session bus (" + std::system_category().message(-status) + ")"};
    }
    RunningKelo kelo(*sd, bus, busName(dataFile));
    ErrorGuard error{*sd};
    MessageGuard reply{*sd};
    const int status =
        sd->callMethod(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "NameHasOwner", &error.error, &reply.message, "s", kelo.name_.c_str());
    int owned = 0;
    if (status < 0 || sd->read(reply.message, "b", &owned) < 0) {
        return Failure{"the session bus did not answer (" + describe(*sd, error.error, status) +
                       ")"};
    }
    if (!owned) {
        return Failure{"no Kelo runs with " + dataFile.string()};
    }
    return kelo;
}

RunningKelo::RunningKelo(const SdBusLibrary& sd, sd_bus* bus, std::string name)
    : sd_(sd)
    , bus_(bus)
    , name_(std::move(name)) {}

RunningKelo::RunningKelo(RunningKelo&& other) noexcept
    : sd_(other.sd_)
    , bus_(other.bus_)
    , name_(std::move(other.name_)) {
    other.bus_ = nullptr;
}

RunningKelo::~RunningKelo() {
    sd_.flushCloseUnref(bus_);
}

std::variant<std::monostate, Failure> RunningKelo::toggle() {
    return withoutAnswer(call("Toggle", nullptr));
}

std::variant<std::monostate, Failure> RunningKelo::openAdd() {
    return withoutAnswer(call("OpenAdd", nullptr));
}

std::variant<std::string, Failure> RunningKelo::add(std::string_view line) {
    return call("Add", std::string(line).c_str());
}

std::variant<std::string, Failure> RunningKelo::call(const char* method, const char* line) {
    ErrorGuard error{sd_};
    MessageGuard message{sd_};
    MessageGuard reply{sd_};
    int status =
        sd_.newMethodCall(bus_, &message.message, name_.c_str(), objectPath, interfaceName, method);
    if (status >= 0 && line) {
        status = sd_.append(message.message, "s", line);
    }
    if (status >= 0) {
        status =
            sd_.call(bus_, message.message, callTimeoutMicroseconds, &error.error, &reply.message);
    }
    if (status < 0) {
        return Failure{"Kelo did not answer (" + describe(sd_, error.error, status) + ")"};
    }
    if (!line) {
        return std::string();
    }
    const char* id = nullptr;
    if (sd_.read(reply.message, "s", &id) < 0 || !id) {
        return Failure{"Kelo's answer could not be read"};
    }
    return std::string(id);
}

} // namespace kelo::bus
