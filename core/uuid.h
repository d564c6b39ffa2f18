#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

// A task's identity: a random version-4 UUID, written upper-case.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    [[nodiscard]] static Uuid random();

    // The 36-character hyphenated form, in either case.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    [[nodiscard]] std::string text() const;

    auto operator<=>(const Uuid&) const = default;
};

} // namespace kelo

template <> struct std::hash<kelo::Uuid> {
    std::size_t operator()(const kelo::Uuid& id) const noexcept;
};
