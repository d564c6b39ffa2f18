#include "bench_calendar.h"

#include <benchmark/benchmark.h>
#include <format.h>

namespace {

using namespace kelo;

// A list relabels its rows on a clock tick: 50 rows, each its time and, for overdue rows, its
// day. The formatters are built once per zone, locale and skeleton, on the first call.
void BM_RelabelFiftyRows(benchmark::State& state) {
    const Calendar& calendar = bench::berlin();
    const Timestamp now = calendar.at(CivilDay{2025, 3, 6}, 9, 0);
    for (auto _ : state) {
        for (int row = 0; row < 50; ++row) {
            benchmark::DoNotOptimize(Format::time(row * 23, false, calendar));
            benchmark::DoNotOptimize(Format::day(row % 2 ? "2025-03-04" : "2025-03-12", now,
                                                 calendar));
        }
    }
}

void BM_FormatTime(benchmark::State& state) {
    const Calendar& calendar = bench::berlin();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Format::time(17 * 60, false, calendar));
    }
}

} // namespace

BENCHMARK(BM_RelabelFiftyRows)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FormatTime)->Unit(benchmark::kMicrosecond);
