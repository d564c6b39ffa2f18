#include "data_file.h"
#include "todo_json.h"
#include "todo_store.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using namespace kelo;

// A realistic list: a third undated, some done, most with a day, half of those timed.
std::vector<Todo> sampleTodos(int count) {
    std::vector<Todo> todos;
    todos.reserve(static_cast<std::size_t>(count));
    const Timestamp start = *parseInternetDateTime("2025-01-01T08:00:00Z");
    for (int i = 0; i < count; ++i) {
        Todo todo;
        todo.id = Uuid::random();
        todo.title = "task number " + std::to_string(i) + " with a typical title";
        if (i % 3 != 0) {
            todo.day = Day::key(CivilDay{2025, 3, 1 + i % 28});
            if (i % 2 == 0) {
                todo.minute = i % 1440;
            }
        }
        if (i % 5 == 0) {
            todo.doneAt = start + std::chrono::hours(i);
        }
        todo.created = start + std::chrono::minutes(i);
        todos.push_back(std::move(todo));
    }
    return todos;
}

fs::path scratchFolder() {
    std::string pattern = (fs::temp_directory_path() / "kelo-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    return pattern;
}

// Written in one go: restoring task by task would save, and fsync, the growing file each time.
void seedFile(const fs::path& file, int count) {
    if (std::holds_alternative<FileError>(
            writeFileAtomically(file, encodeTodos(sampleTodos(count))))) {
        std::abort();
    }
}

// A whole save as the store does it after every change: encode, write, fsync, rename.
void BM_Save(benchmark::State& state) {
    const fs::path folder = scratchFolder();
    const fs::path file = folder / "todos.json";
    seedFile(file, static_cast<int>(state.range(0)));
    TodoStore store(file, TodoStore::Options{currentTime, [](std::string_view) {}});
    const Uuid first = store.todos().front().id;
    for (auto _ : state) {
        store.toggle(first, currentTime());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    fs::remove_all(folder);
}
BENCHMARK(BM_Save)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The encoding alone, to tell the CPU's share from the disk's.
void BM_Encode(benchmark::State& state) {
    const auto todos = sampleTodos(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(encodeTodos(todos));
    }
}
BENCHMARK(BM_Encode)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The decoding alone, to tell the CPU's share of a load from the disk's.
void BM_Decode(benchmark::State& state) {
    const std::string bytes = encodeTodos(sampleTodos(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodeTodos(bytes));
    }
}
BENCHMARK(BM_Decode)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The disk's share of a save: write, fsync, rename and the folder's fsync, without encoding.
void BM_WriteAtomically(benchmark::State& state) {
    const fs::path folder = scratchFolder();
    const fs::path file = folder / "todos.json";
    const std::string bytes = encodeTodos(sampleTodos(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(writeFileAtomically(file, bytes));
    }
    fs::remove_all(folder);
}
BENCHMARK(BM_WriteAtomically)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// A start-up load: read and decode, and, unless only the part before the first frame is measured,
// the backup copy the shell asks for after it.
void load(benchmark::State& state, bool withBackup) {
    const fs::path folder = scratchFolder();
    const fs::path file = folder / "todos.json";
    seedFile(file, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        TodoStore store(file, TodoStore::Options{currentTime, [](std::string_view) {}});
        if (withBackup) {
            store.writeBackup();
        }
        benchmark::DoNotOptimize(store.todos().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    fs::remove_all(folder);
}
void BM_Load(benchmark::State& state) {
    load(state, true);
}
void BM_LoadBeforeFirstFrame(benchmark::State& state) {
    load(state, false);
}
BENCHMARK(BM_Load)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadBeforeFirstFrame)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
