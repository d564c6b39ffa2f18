#include "quick_parse_words.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace kelo::QuickParseWords {

namespace {

// clang-format off
constexpr auto entries = [] {
    auto sorted = std::to_array<Entry>({
        {"sun", Kind::weekday, 1}, {"sunday", Kind::weekday, 1},
        {"mon", Kind::weekday, 2}, {"monday", Kind::weekday, 2},
        {"tue", Kind::weekday, 3}, {"tues", Kind::weekday, 3}, {"tuesday", Kind::weekday, 3},
        {"wed", Kind::weekday, 4}, {"weds", Kind::weekday, 4}, {"wednesday", Kind::weekday, 4},
        {"thu", Kind::weekday, 5}, {"thur", Kind::weekday, 5}, {"thurs", Kind::weekday, 5},
        {"thursday", Kind::weekday, 5},
        {"fri", Kind::weekday, 6}, {"friday", Kind::weekday, 6},
        {"sat", Kind::weekday, 7}, {"saturday", Kind::weekday, 7},

        {"jan", Kind::month, 1}, {"january", Kind::month, 1},
        {"feb", Kind::month, 2}, {"february", Kind::month, 2},
        {"mar", Kind::month, 3}, {"march", Kind::month, 3},
        {"apr", Kind::month, 4}, {"april", Kind::month, 4},
        {"may", Kind::month, 5},
        {"jun", Kind::month, 6}, {"june", Kind::month, 6},
        {"jul", Kind::month, 7}, {"july", Kind::month, 7},
        {"aug", Kind::month, 8}, {"august", Kind::month, 8},
        {"sep", Kind::month, 9}, {"sept", Kind::month, 9}, {"september", Kind::month, 9},
        {"oct", Kind::month, 10}, {"october", Kind::month, 10},
        {"nov", Kind::month, 11}, {"november", Kind::month, 11},
        {"dec", Kind::month, 12}, {"december", Kind::month, 12},

        {"morning", Kind::dayPart, 540}, {"noon", Kind::dayPart, 720},
        {"afternoon", Kind::dayPart, 900}, {"evening", Kind::dayPart, 1080},

        {"day", Kind::unit, 1}, {"days", Kind::unit, 1}, {"d", Kind::unit, 1},
        {"week", Kind::week, 7}, {"weeks", Kind::unit, 7}, {"w", Kind::unit, 7},
        {"wk", Kind::unit, 7}, {"wks", Kind::unit, 7},

        {"today", Kind::today}, {"tonight", Kind::tonight}, {"tomorrow", Kind::tomorrow},
        {"tmr", Kind::tomorrow}, {"tmrw", Kind::tomorrow}, {"tomorow", Kind::tomorrow},
        {"weekend", Kind::weekend}, {"next", Kind::next}, {"in", Kind::in}, {"at", Kind::at},
        {"@", Kind::at}, {"this", Kind::this_}, {"on", Kind::on}, {"by", Kind::by},
        {"due", Kind::by}, {"am", Kind::am}, {"pm", Kind::pm},
    });
    // Sorted, so that the entries of one first letter stand together: every word of every line
    // typed is looked up, and most of them are not in the vocabulary.
    std::ranges::sort(sorted, {}, &Entry::word);
    return sorted;
}();
// clang-format on

static_assert(entries.size() == 71);
static_assert(std::ranges::adjacent_find(entries, {}, &Entry::word) == entries.end());

constexpr std::size_t longestEntry = 9; // "september"

// Where the entries of each first letter begin and end in the sorted table: a word is compared
// only with the few entries that share its first letter, most of them of another length.
constexpr auto firstLetterRanges = [] {
    std::array<std::pair<std::size_t, std::size_t>, 256> ranges{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        auto& [begin, end] = ranges[static_cast<unsigned char>(entries[i].word.front())];
        begin = end == 0 ? i : begin;
        end = i + 1;
    }
    return ranges;
}();

constexpr bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWhiteSpace(UChar32 c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || (c >= 0x80 && u_isUWhiteSpace(c));
}

bool isWordPunctuation(char c) {
    return c == ',' || c == '.' || c == ';' || c == '!' || c == '?';
}

std::string_view trimWordPunctuation(std::string_view word) {
    while (!word.empty() && isWordPunctuation(word.front())) {
        word.remove_prefix(1);
    }
    while (!word.empty() && isWordPunctuation(word.back())) {
        word.remove_suffix(1);
    }
    return word;
}

} // namespace

const Entry* lookup(std::string_view word) {
    if (word.empty() || word.size() > longestEntry) {
        return nullptr;
    }
    const auto [begin, end] = firstLetterRanges[static_cast<unsigned char>(word.front())];
    const auto* found = std::find_if(entries.begin() + begin, entries.begin() + end,
                                     [word](const Entry& entry) { return entry.word == word; });
    return found != entries.begin() + end ? found : nullptr;
}

std::optional<int> time(std::string_view word, bool bare) {
    if (word.starts_with('@')) {
        word.remove_prefix(1);
        bare = true;
    }
    const auto digitAt = [word](std::size_t at) {
        return at < word.size() && isAsciiDigit(word[at]);
    };
    if (!digitAt(0)) {
        return std::nullopt;
    }
    std::size_t at = digitAt(1) ? 2 : 1;
    int hour = at == 2 ? (word[0] - '0') * 10 + (word[1] - '0') : word[0] - '0'; // [0, 99]
    std::optional<int> minute;
    if (at < word.size() && word[at] == ':' && digitAt(at + 1) && digitAt(at + 2)) {
        minute = (word[at + 1] - '0') * 10 + (word[at + 2] - '0'); // [0, 99]
        at += 3;
    }
    const std::string_view suffix = word.substr(at);
    if ((!suffix.empty() && suffix != "am" && suffix != "pm" && suffix != "a" && suffix != "p") ||
        minute.value_or(0) > 59) {
        return std::nullopt;
    }
    if (!suffix.empty()) {
        if (hour < 1 || hour > 12) {
            return std::nullopt;
        }
        hour = (hour == 12 ? 0 : hour) + (suffix.front() == 'p' ? 12 : 0);
    } else if (minute ? hour > 23 : !bare || hour < 1 || hour > 12) {
        return std::nullopt;
    } else if (hour >= 1 && hour <= 6) {
        // Nobody plans "at 3" or "3:30" for the small hours.
        hour += 12;
    }
    return hour * 60 + minute.value_or(0);
}

std::optional<std::int64_t> number(std::string_view word) {
    for (const std::string_view suffix : {"st", "nd", "rd", "th"}) {
        if (word.ends_with(suffix)) {
            word.remove_suffix(suffix.size());
            break;
        }
    }
    const std::string_view digits = word.substr(word.starts_with('+') || word.starts_with('-'));
    if (digits.empty() || !std::ranges::all_of(digits, isAsciiDigit)) {
        return std::nullopt;
    }
    // from_chars reads a minus sign but not a plus sign.
    const std::string_view text = word.starts_with('-') ? word : digits;
    std::int64_t value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

Line::Line(std::string_view text)
    : lowered_(text) {
    for (char& c : lowered_) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    // Exact for the usual line of words between single spaces: no regrowth of the vector.
    words_.reserve(static_cast<std::size_t>(std::ranges::count(text, ' ')) + 1);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t start = 0;
    std::size_t beyondAscii = 0;
    bool ascii = true;
    const auto endWord = [&](std::size_t end) {
        if (end > start) {
            words_.emplace_back().typed = text.substr(start, end - start);
            beyondAscii += ascii ? 0 : 1;
        }
        ascii = true;
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t here = at;
        UChar32 c = 0;
        U8_NEXT(bytes, at, text.size(), c);
        if (isWhiteSpace(c)) {
            endWord(here);
            start = at;
        } else {
            ascii = ascii && c >= 0 && c < 0x80;
        }
    }
    endWord(text.size());

    // Reserved up front, so that the views into it stay valid.
    others_.reserve(beyondAscii);
    for (Word& word : words_) {
        lower(word, text);
        word.entry = lookup(word.text);
        const char first = word.text.empty() ? '\0' : word.text.front();
        if (isAsciiDigit(first) || first == '@' || first == '+' || first == '-') {
            word.number = number(word.text);
            word.time = time(word.text, false);
            word.bareTime = time(word.text, true);
        }
    }
}

// Unicode's default lower case; the ASCII words, by far the most, without ICU.
void Line::lower(Word& word, std::string_view text) {
    const bool ascii = std::ranges::all_of(word.typed, [](char c) { return (c & 0x80) == 0; });
    // Past ICU's lengths only the ASCII letters are lowered; no such word is in the vocabulary.
    if (ascii || word.typed.size() > INT32_MAX) {
        const auto offset = static_cast<std::size_t>(word.typed.data() - text.data());
        word.text =
            trimWordPunctuation(std::string_view(lowered_).substr(offset, word.typed.size()));
        return;
    }
    std::string& lowered = others_.emplace_back();
    icu::StringByteSink<std::string> sink(&lowered);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower(
        "", 0, icu::StringPiece(word.typed.data(), static_cast<int32_t>(word.typed.size())), sink,
        nullptr, status);
    word.text = trimWordPunctuation(U_SUCCESS(status) ? std::string_view(lowered) : word.typed);
}

} // namespace kelo::QuickParseWords
