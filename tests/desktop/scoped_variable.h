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

inline void setValue(const char* name, const Value& value) {
    value ? void(qputenv(name, *value)) : void(qunsetenv(name));
}

// Sets or clears an environment variable until the returned guard goes out of scope.
[[nodiscard]] inline auto scopedVariable(const char* name, const Value& value) {
    auto restore = qScopeGuard([name, saved = currentValue(name)] { setValue(name, saved); });
    setValue(name, value);
    return restore;
}

} // namespace kelo::testing

Q_DECLARE_METATYPE(kelo::testing::Value)
