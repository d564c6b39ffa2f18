#include "uuid.h"

#include <array>
#include <cstring>
#include <random>

namespace kelo {

namespace {

constexpr bool isHyphenPosition(std::size_t i) {
    return i == 8 || i == 13 || i == 18 || i == 23;
}

// The value of each byte as a hex digit, or -1.
constexpr std::array<std::int8_t, 256> hexValues = [] {
    std::array<std::int8_t, 256> values{};
    for (std::size_t c = 0; c < values.size(); ++c) {
        values[c] = c >= '0' && c <= '9'   ? static_cast<std::int8_t>(c - '0')
                    : c >= 'a' && c <= 'f' ? static_cast<std::int8_t>(c - 'a' + 10)
                    : c >= 'A' && c <= 'F' ? static_cast<std::int8_t>(c - 'A' + 10)
                                           : std::int8_t{-1};
    }
    return values;
}();

} // namespace

Uuid Uuid::random() {
    // One generator for the whole process, seeded from the kernel's entropy.
    thread_local std::mt19937_64 generator{[] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }()};
    Uuid id;
    for (std::size_t i = 0; i < id.bytes.size(); i += 8) {
        const std::uint64_t word = generator();
        std::memcpy(id.bytes.data() + i, &word, 8);
    }
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0F) | 0x40); // version 4
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3F) | 0x80); // RFC 4122 variant
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-') {
        return std::nullopt;
    }
    // Every load reads one of these per task, hence a table look-up per digit.
    Uuid id;
    std::size_t at = 0;
    for (std::uint8_t& byte : id.bytes) {
        at += isHyphenPosition(at) ? 1 : 0;
        const int high = hexValues[static_cast<unsigned char>(text[at])];
        const int low = hexValues[static_cast<unsigned char>(text[at + 1])];
        if ((high | low) < 0) {
            return std::nullopt;
        }
        byte = static_cast<std::uint8_t>(high * 16 + low);
        at += 2;
    }
    return id;
}

std::string Uuid::text() const {
    static constexpr char digits[] = "0123456789ABCDEF";
    // Filled in place: every save writes one of these per task.
    char out[36];
    char* next = out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            *next++ = '-';
        }
        *next++ = digits[bytes[i] >> 4];
        *next++ = digits[bytes[i] & 0x0F];
    }
    return std::string(out, sizeof out);
}

} // namespace kelo

std::size_t std::hash<kelo::Uuid>::operator()(const kelo::Uuid& id) const noexcept {
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::memcpy(&a, id.bytes.data(), 8);
    std::memcpy(&b, id.bytes.data() + 8, 8);
    return static_cast<std::size_t>(a ^ (b * 0x9E3779B97F4A7C15ULL));
}
