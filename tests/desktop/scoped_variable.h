#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace kelo::testing {

// Sets or clears (none) an environment variable for one test and restores it afterwards.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::optional<QByteArray>& value)
        : name_(name)
        , saved_(current(name)) {
        assign(name, value);
    }
    ~ScopedVariable() { assign(name_, saved_); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

    [[nodiscard]] static std::optional<QByteArray> current(const char* name) {
        return qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
    }

private:
    static void assign(const char* name, const std::optional<QByteArray>& value) {
        value ? void(qputenv(name, *value)) : void(qunsetenv(name));
    }

    const char* name_;
    std::optional<QByteArray> saved_;
};

} // namespace kelo::testing
