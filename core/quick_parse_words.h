#pragma once

// The words of a quick-add line and what each means on its own: the vocabulary of the reader,
// times ("3pm", "9:30") and numbers ("5th"). Private to quick_parse.cpp.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::QuickParseWords {

// `word` is any word outside the vocabulary.
enum class Kind {
    today,
    tonight,
    tomorrow,
    weekend,
    next,
    week,
    in,
    at,
    this_,
    on,
    by,
    am,
    pm,
    weekday,
    month,
    dayPart,
    unit,
    word
};

// The value is the weekday number (1 = Sunday ... 7 = Saturday), the month, the day part's
// minute of the day or the unit's days; "week" is both the word after "next" and a unit of 7.
struct Entry {
    std::string_view word;
    Kind kind;
    int value = 0;
};

// The entry of a lower-case word, if the reader knows it.
[[nodiscard]] const Entry* lookup(std::string_view word);

// A time of day in minutes after midnight: "3pm", "9:30", "12am", "@7". A lone hour ("3") only
// when `bare`, since "meeting 3" is a title but "meeting at 3" is not.
[[nodiscard]] std::optional<int> time(std::string_view word, bool bare);

// "5th", "21st", "3", "+3", "-2": an ordinal counts as its number.
[[nodiscard]] std::optional<std::int64_t> number(std::string_view word);

// One word of a line, looked at once: the reads of a long line visit every word many times.
struct Word {
    std::string_view typed; // as typed, for the title
    std::string_view text;  // lower-cased, trimmed of word punctuation
    const Entry* entry = nullptr;
    std::optional<std::int64_t> number;
    std::optional<int> time;     // read without the permission for a lone hour
    std::optional<int> bareTime; // read with it

    [[nodiscard]] bool is(Kind kind) const { return entry != nullptr && entry->kind == kind; }
    [[nodiscard]] std::optional<int> value(Kind kind) const {
        return is(kind) ? std::optional(entry->value) : std::nullopt;
    }
};

// The words of a line, cut at runs of Unicode white space, with the lower-cased text they point
// into; hence neither copied nor moved. A byte that is not UTF-8 is a character of its own and
// never white space, so any input gives words.
class Line {
public:
    explicit Line(std::string_view text);
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    [[nodiscard]] std::span<const Word> words() const { return words_; }

private:
    void lower(Word& word, std::string_view text);

    std::string lowered_;             // the text with its ASCII letters lower-cased
    std::vector<std::string> others_; // the lower case of the words beyond ASCII
    std::vector<Word> words_;
};

// The names `phrase` writes, chosen so that the reader reads them back.
inline constexpr std::array<std::string_view, 7> weekdayNames{
    "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
inline constexpr std::array<std::string_view, 12> monthNames{
    "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};

} // namespace kelo::QuickParseWords
