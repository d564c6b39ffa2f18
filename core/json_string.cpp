#include "json_string.h"

#include <array>
#include <cstdint>
#include <unicode/utf8.h>

namespace kelo {

namespace {

// Bytes that cannot be written into a string as they are, and bytes beyond ASCII, which are
// written as they are only as part of a well-formed UTF-8 sequence.
constexpr std::array<bool, 256> needsLook = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        table[c] = c < 0x20 || c == '"' || c == '\\' || c == '/' || c >= 0x80;
    }
    return table;
}();

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";
constexpr std::string_view jsonWhitespace = " \t\n\r";

void appendEscape(std::string& out, char c) {
    static constexpr std::string_view named = "\"\\/\b\f\n\r\t";
    static constexpr std::string_view letters = "\"\\/bfnrt";
    static constexpr char hex[] = "0123456789abcdef";
    if (const std::size_t found = named.find(c); found != named.npos) {
        out += '\\';
        out += letters[found];
        return;
    }
    out += "\\u00";
    out += hex[static_cast<unsigned char>(c) >> 4];
    out += hex[static_cast<unsigned char>(c) & 0x0F];
}

} // namespace

void appendJsonString(std::string& out, std::string_view text, Slash slash) {
    out += '"';
    // Runs of plain characters are copied at once; most text has nothing to escape.
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    std::size_t run = 0;
    for (std::int32_t i = 0; i < length;) {
        if (!needsLook[bytes[i]] || (bytes[i] == '/' && slash == Slash::plain)) {
            ++i;
            continue;
        }
        if (bytes[i] < 0x80) {
            out.append(text, run, static_cast<std::size_t>(i) - run);
            appendEscape(out, text[static_cast<std::size_t>(i)]);
            run = static_cast<std::size_t>(++i);
            continue;
        }
        const std::int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) {
            out.append(text, run, static_cast<std::size_t>(start) - run);
            out += replacementCharacter;
            run = static_cast<std::size_t>(i);
        }
    }
    out.append(text, run);
    out += '"';
}

std::optional<std::string_view> plainJsonString(std::string_view line) {
    const std::size_t first = line.find_first_not_of(jsonWhitespace);
    const std::size_t last = line.find_last_not_of(jsonWhitespace);
    if (first == line.npos || last == first || line[first] != '"' || line[last] != '"') {
        return std::nullopt;
    }
    const std::string_view text = line.substr(first + 1, last - first - 1);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < length;) {
        if (!needsLook[bytes[i]] || bytes[i] == '/') {
            ++i;
            continue;
        }
        if (bytes[i] < 0x80) {
            return std::nullopt;
        }
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) {
            return std::nullopt;
        }
    }
    return text;
}

} // namespace kelo
