#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QScopeGuard>
#include <optional>

namespace kelo::testing {

// An environment variable's value; none when it is not set.
using Value = std::optional<QByteArray>;

inline Value currentValue(const char* name) {
    return qEnvironmentVariableIsSet(name) ? Value(qgetenv(name)) : std::nullopt;
}

// Sets or clears an environment variable until the returned guard goes out of scope.
[[nodiscard]] inline auto scopedVariable(const char* name, const Value& value) {
    const auto set = [name](const Value& to) { to ? qputenv(name, *to) : qunsetenv(name); };
    auto restore = qScopeGuard([set, saved = currentValue(name)] { set(saved); });
    set(value);
    return restore;
}

} // namespace kelo::testing

Q_DECLARE_METATYPE(kelo::testing::Value)
