#include "bench_calendar.h"
#include "lists.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <random>

namespace {

using namespace kelo;
using std::chrono::hours;
using std::chrono::minutes;

using bench::berlin;

// Thursday 2025-03-06, 14:03 in Berlin.
Timestamp now() {
    return berlin().at(CivilDay{2025, 3, 6}, 14, 3);
}

// A long-lived list seen on one day: some overdue, today's timed and untimed tasks, some done,
// most of the rest spread over the next 60 days, and an undated backlog.
std::vector<Todo> mixedTodos(int count) {
    std::mt19937 random(20250306);
    const CivilDay today{2025, 3, 6};
    const auto pick = [&random](int below) {
        return std::uniform_int_distribution<int>(0, below - 1)(random);
    };
    std::vector<Todo> todos;
    todos.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        Todo todo;
        todo.id = Uuid::random();
        todo.title = "task number " + std::to_string(i) + " with a typical title";
        todo.created = now() - hours(24 * 90) + minutes(i * 13);
        const int kind = pick(100);
        if (kind < 10) { // overdue, a few of them completed today or earlier
            todo.day = Day::key(today.adding(-1 - pick(30)));
            if (pick(3) == 0) {
                todo.doneAt = now() - hours(pick(72));
            }
        } else if (kind < 25) { // today, timed
            todo.day = Day::key(today);
            todo.minute = pick(1440);
        } else if (kind < 35) { // today, untimed
            todo.day = Day::key(today);
        } else if (kind < 45) { // today, done
            todo.day = Day::key(today);
            todo.minute = pick(2) == 0 ? std::optional<std::int64_t>(pick(1440)) : std::nullopt;
            todo.doneAt = now() - minutes(pick(600));
        } else if (kind < 80) { // the next 60 days, a tenth of them done already
            todo.day = Day::key(today.adding(1 + pick(60)));
            todo.minute = pick(2) == 0 ? std::optional<std::int64_t>(pick(1440)) : std::nullopt;
            if (pick(10) == 0) {
                todo.doneAt = now() - hours(pick(48));
            }
        } else if (pick(4) == 0) { // backlog, done today or earlier
            todo.doneAt = now() - hours(pick(48));
        }
        todos.push_back(std::move(todo));
    }
    return todos;
}

template <typename List> void runList(benchmark::State& state, List list) {
    const auto todos = mixedTodos(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(list(todos, now(), berlin()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_TodaySections(benchmark::State& state) {
    runList(state, todaySections);
}
void BM_Upcoming(benchmark::State& state) {
    runList(state, upcoming);
}
void BM_Backlog(benchmark::State& state) {
    runList(state, backlog);
}
void BM_Progress(benchmark::State& state) {
    runList(state, progress);
}
void BM_NextTimed(benchmark::State& state) {
    runList(state, nextTimed);
}
void BM_DueNow(benchmark::State& state) {
    runList(state, dueNow);
}

// Everything a redraw of the open island and a clock tick compute from one list.
void BM_AllLists(benchmark::State& state) {
    const auto todos = mixedTodos(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(todaySections(todos, now(), berlin()));
        benchmark::DoNotOptimize(upcoming(todos, now(), berlin()));
        benchmark::DoNotOptimize(backlog(todos, now(), berlin()));
        benchmark::DoNotOptimize(progress(todos, now(), berlin()));
        benchmark::DoNotOptimize(nextTimed(todos, now(), berlin()));
        benchmark::DoNotOptimize(dueNow(todos, now(), berlin()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_TodaySections)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Upcoming)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Backlog)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Progress)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_NextTimed)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DueNow)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AllLists)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
