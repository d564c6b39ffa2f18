#include "bench_calendar.h"
#include "quick_parse.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>

namespace {

using namespace kelo;

using bench::berlin;

// Thursday 2025-03-06, 10:00 in Berlin.
Timestamp now() {
    return berlin().at(CivilDay{2025, 3, 6}, 10, 0);
}

// Lines as people type them into the add field: most carry a short phrase, some none.
constexpr std::array<std::string_view, 20> corpus{
    "dentist fri 3pm",
    "taxes apr 30",
    "pay rent in 3 days",
    "call mom tomorrow morning",
    "dinner tonight 7pm",
    "buy milk",
    "meeting at 3",
    "standup @9:30",
    "review pull request by fri.",
    "party this weekend",
    "plan next week",
    "renew passport on 5th mar",
    "water the plants",
    "book flights to Lisbon in 2 weeks",
    "Zahnarzt Termin vereinbaren",
    "gym 7 am",
    "call bob, fri",
    "lunch with Ana noon",
    "reply to the landlord about the heating tmrw 5p",
    "x 13pm",
};

// About 1 KiB of one line: the phrase reader is tried at every word, so this is the worst case
// for a long paste.
std::string longLine(std::string_view unit) {
    std::string line;
    while (line.size() < 1024) {
        line += unit;
    }
    return line;
}

void parseOne(benchmark::State& state, std::string_view line) {
    const Timestamp at = now();
    for (auto _ : state) {
        benchmark::DoNotOptimize(QuickParse::parse(line, at, berlin()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(line.size()));
}

void BM_ParseTypical(benchmark::State& state) {
    parseOne(state, "dentist fri 3pm");
}
BENCHMARK(BM_ParseTypical);

void BM_ParseCorpus(benchmark::State& state) {
    const Timestamp at = now();
    for (auto _ : state) {
        for (const std::string_view line : corpus) {
            benchmark::DoNotOptimize(QuickParse::parse(line, at, berlin()));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(corpus.size()));
}
BENCHMARK(BM_ParseCorpus);

void BM_PlanCorpus(benchmark::State& state) {
    const Timestamp at = now();
    for (auto _ : state) {
        for (const std::string_view line : corpus) {
            benchmark::DoNotOptimize(QuickParse::plan(line, Bucket::today, at, berlin()));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(corpus.size()));
}
BENCHMARK(BM_PlanCorpus);

void BM_ParseLongPlainWords(benchmark::State& state) {
    parseOne(state, longLine("the quick brown fox jumps over the lazy dog "));
}
BENCHMARK(BM_ParseLongPlainWords);

// Every word starts a phrase that breaks off a word or two later.
void BM_ParseLongNearPhrases(benchmark::State& state) {
    parseOne(state, longLine("in 3 at fri next "));
}
BENCHMARK(BM_ParseLongNearPhrases);

// Words that each read on to the end of the line before the last word fails every read.
void BM_ParseLongSkippedWords(benchmark::State& state) {
    parseOne(state, longLine("by ") + "dentist");
}
BENCHMARK(BM_ParseLongSkippedWords);

void BM_ParseLongDayParts(benchmark::State& state) {
    parseOne(state, "x " + longLine("morning ") + "dentist");
}
BENCHMARK(BM_ParseLongDayParts);

void BM_ParseLongUnicode(benchmark::State& state) {
    parseOne(state, longLine("Größe Überprüfung\u00A0café "));
}
BENCHMARK(BM_ParseLongUnicode);

void BM_When(benchmark::State& state) {
    const Timestamp at = now();
    for (auto _ : state) {
        benchmark::DoNotOptimize(QuickParse::when("tomorrow 3pm", at, berlin()));
    }
}
BENCHMARK(BM_When);

void BM_Phrase(benchmark::State& state) {
    const Timestamp at = now();
    const std::optional<DayKey> day = "2025-03-08";
    const std::optional<std::int64_t> minute = 570;
    for (auto _ : state) {
        benchmark::DoNotOptimize(QuickParse::phrase(day, minute, at, berlin()));
    }
}
BENCHMARK(BM_Phrase);

} // namespace
