#include "data_file_lock.h"
#include "testing.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Thursday 2025-03-06, 10:00 in Berlin, with English texts.
const std::vector<std::string> reference{
    "--now", "2025-03-06T10:00:00+01:00", "--tz", "Europe/Berlin", "--locale", "en_US"};

std::vector<std::string> withReference(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), reference.begin(), reference.end());
    return arguments;
}

// kelo-core running as a co-process: its input, output and error streams are pipes, and every
// wait has a deadline, so a hang or a missing answer fails the test instead of stalling it.
class KeloCore {
public:
    struct Ending {
        int status = -1; // the exit status; 128 + the signal when killed
        std::string output;
        std::string errors;
    };

    explicit KeloCore(std::vector<std::string> arguments)
        : arguments_(std::move(arguments)) {
        // A child that dies must fail the test, not kill it with SIGPIPE.
        std::signal(SIGPIPE, SIG_IGN);
        int input[2];
        int output[2];
        int errors[2];
        if (::pipe2(input, O_CLOEXEC) != 0 || ::pipe2(output, O_CLOEXEC) != 0 ||
            ::pipe2(errors, O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipes");
        }
        std::vector<char*> argv{const_cast<char*>(KELO_CORE_PROGRAM)};
        for (std::string& argument : arguments_) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        pid_ = ::fork();
        if (pid_ == 0) {
            std::signal(SIGPIPE, SIG_DFL);
            ::dup2(input[0], STDIN_FILENO);
            ::dup2(output[1], STDOUT_FILENO);
            ::dup2(errors[1], STDERR_FILENO);
            ::execv(KELO_CORE_PROGRAM, argv.data());
            ::_exit(127);
        }
        ::close(input[0]);
        ::close(output[1]);
        ::close(errors[1]);
        in_ = input[1];
        out_ = output[0];
        err_ = errors[0];
    }

    KeloCore(const KeloCore&) = delete;
    KeloCore& operator=(const KeloCore&) = delete;

    ~KeloCore() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        for (const int fd : {in_, out_, err_}) {
            if (fd >= 0) {
                ::close(fd);
            }
        }
    }

    // Writes one line; false when the program no longer reads.
    bool send(std::string_view line) {
        std::string bytes(line);
        bytes += '\n';
        for (std::size_t sent = 0; sent < bytes.size();) {
            const ssize_t n = ::write(in_, bytes.data() + sent, bytes.size() - sent);
            if (n <= 0) {
                return false;
            }
            sent += static_cast<std::size_t>(n);
        }
        return true;
    }

    // Sends one line and waits for one line of answer; none when no answer comes in time.
    std::optional<std::string> ask(std::string_view line) {
        if (!send(line)) {
            return std::nullopt;
        }
        const auto deadline = Clock::now() + 10s;
        for (;;) {
            if (const auto end = output_.find('\n'); end != std::string::npos) {
                std::string answer = output_.substr(0, end);
                output_.erase(0, end + 1);
                return answer;
            }
            if (!readSome(out_, output_, deadline)) {
                return std::nullopt;
            }
        }
    }

    // Closes the input and waits for the program to end.
    Ending finish() {
        ::close(in_);
        in_ = -1;
        const auto deadline = Clock::now() + 30s;
        Ending ending;
        while (readSome(out_, output_, deadline)) {
        }
        while (readSome(err_, ending.errors, deadline)) {
        }
        ending.output = std::exchange(output_, {});
        int status = 0;
        if (Clock::now() < deadline && ::waitpid(pid_, &status, 0) == pid_) {
            pid_ = -1;
            ending.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        return ending;
    }

private:
    // False at the end of the stream or at the deadline.
    static bool readSome(int fd, std::string& into, Clock::time_point deadline) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd ready{fd, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&ready, 1, static_cast<int>(left.count())) <= 0) {
            return false;
        }
        char buffer[4096];
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n <= 0) {
            return false;
        }
        into.append(buffer, static_cast<std::size_t>(n));
        return true;
    }

    std::vector<std::string> arguments_;
    pid_t pid_ = -1;
    int in_ = -1;
    int out_ = -1;
    int err_ = -1;
    std::string output_;
};

KeloCore::Ending run(const std::vector<std::string>& arguments, std::string_view input = {}) {
    KeloCore program(arguments);
    if (!input.empty()) {
        // Small inputs only: the answers wait in the pipe until finish reads them. A program that
        // exits without reading its input is no failure here.
        program.send(input);
    }
    return program.finish();
}

struct Exchange {
    const char* input;
    const char* answer; // compared as JSON values, so member order and spacing do not matter
};

void expectAnswers(const std::vector<std::string>& arguments,
                   std::initializer_list<Exchange> exchanges) {
    KeloCore program(withReference(arguments));
    for (const Exchange& exchange : exchanges) {
        const auto answer = program.ask(exchange.input);
        ASSERT_TRUE(answer.has_value()) << arguments[0] << " got no answer to " << exchange.input;
        EXPECT_EQ(json::parse(*answer, nullptr, false), json::parse(exchange.answer))
            << arguments[0] << " " << exchange.input << " -> " << *answer;
    }
    const auto ending = program.finish();
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output, "");
}

TEST(KeloCoreCli, LineCommandsAnswerEachLine) {
    expectAnswers(
        {"parse"},
        {
            {R"("dentist fri 3pm")", R"({"title": "dentist", "day": "2025-03-07", "minute": 900})"},
            {R"("taxes jan 15")", R"({"title": "taxes", "day": "2026-01-15", "minute": null})"},
            {R"("pay rent in 3 days")",
             R"({"title": "pay rent", "day": "2025-03-09", "minute": null})"},
            {R"("meeting 3")", R"({"title": "meeting 3", "day": null, "minute": null})"},
            {R"("x 12:30am")", R"({"title": "x", "day": null, "minute": 30})"},
            {"", R"({"error": "empty line"})"},
            {"  \t", R"({"error": "empty line"})"},
            {"dentist fri", R"({"error": "not JSON"})"},
            {"42", R"({"error": "expected a JSON string"})"},
        });
    expectAnswers({"parse", "--bucket", "upcoming"},
                  {{R"("milk")", R"({"title": "milk", "day": "2025-03-07", "minute": null})"}});
    expectAnswers(
        {"parse", "--bucket=backlog"},
        {
            {R"("milk")", R"({"title": "milk", "day": null, "minute": null})"},
            {R"("milk 5pm")", R"({"title": "milk", "day": "2025-03-06", "minute": 1020})"},
        });
    expectAnswers({"when"}, {
                                {R"("Tomorrow 3PM")", R"({"day": "2025-03-07", "minute": 900})"},
                                {R"("3pm")", R"({"day": null, "minute": 900})"},
                                {R"("dentist")", "null"},
                                {R"("fri tomorrow")", "null"},
                                {"[]", R"({"error": "expected a JSON string"})"},
                            });
    expectAnswers({"phrase"},
                  {
                      {R"({"day": "2025-03-07", "minute": 900})", R"("tomorrow 3pm")"},
                      {R"({"day": "2025-03-08", "minute": 570})", R"("saturday 9:30am")"},
                      {R"({"day": "2025-03-13"})", R"("mar 13")"},
                      {R"({"day": null, "minute": null})", R"("")"},
                      {R"({"minute": 1440})",
                       R"({"error": "minute must be a whole number from 0 to 1439, or null"})"},
                      {R"({"day": 7})", R"({"error": "day must be a text or null"})"},
                  });
    expectAnswers(
        {"format"},
        {
            {R"({"day": "2025-03-06", "minute": 1020})",
             "{\"day\": \"Today\", \"time\": \"5:00\u202fPM\", \"compact\": \"5:00\", "
             "\"when\": \"Today · 5:00\u202fPM\"}"},
            {R"({"day": "2025-03-13", "minute": null})",
             R"({"day": "Thu, Mar 13", "time": null, "compact": null, "when": "Thu, Mar 13"})"},
            {R"({"day": null, "minute": 900})",
             "{\"day\": null, \"time\": \"3:00\u202fPM\", \"compact\": \"3:00\", "
             "\"when\": \"Backlog\"}"},
            {R"("today")", R"({"error": "expected an object {\"day\": ..., \"minute\": ...}"})"},
        });
}

TEST(KeloCoreCli, FormatFollowsLocaleAndZoneOptions) {
    KeloCore program(
        {"format", "--now", "2025-03-06T23:30:00Z", "--tz", "Asia/Tokyo", "--locale", "de_DE"});
    // 08:30 on Friday in Tokyo: the 7th is today there.
    const auto answer = program.ask(R"({"day": "2025-03-07", "minute": 1020})");
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(json::parse(*answer, nullptr, false),
              json::parse(R"({"day": "Today", "time": "17:00", "compact": "17:00",
                              "when": "Today · 17:00"})"));
    EXPECT_EQ(program.finish().status, 0);
}

TEST(KeloCoreCli, BadCommandLinesExitWithStatus2AndUsage) {
    const std::vector<std::vector<std::string>> cases{
        {},
        {"frobnicate"},
        {"parse", "extra"},
        {"lists"},
        {"add", "a.json", "b.json"},
        {"--colour", "red", "parse"},
        {"parse", "--now"},
        {"parse", "--now", "yesterday"},
        {"parse", "--now", "2025-03-06T10:00:00"},
        {"parse", "--tz", "Mars/Olympus_Mons"},
        {"parse", "--locale", "xx_YY"},
        {"parse", "--bucket", "someday"},
    };
    for (const auto& arguments : cases) {
        const auto ending = run(arguments);
        std::string shown;
        for (const auto& argument : arguments) {
            shown += argument + " ";
        }
        EXPECT_EQ(ending.status, 2) << shown;
        EXPECT_NE(ending.errors.find("Usage: kelo-core"), std::string::npos) << shown;
        EXPECT_EQ(ending.output, "") << shown;
    }
    const auto help = run({"parse", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.rfind("Usage: kelo-core", 0), 0u);
    EXPECT_EQ(run({"--version"}).output, "kelo-core " KELO_VERSION "\n");
}

TEST(KeloCoreCli, AddWritesThroughTheStoreAndListsReadsTheFile) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    std::vector<json> added;
    {
        KeloCore program(withReference({"add", file.string()}));
        for (const char* line : {R"("dentist fri 3pm")", R"("  ")", R"("milk")", "milk"}) {
            const auto answer = program.ask(line);
            ASSERT_TRUE(answer.has_value()) << line;
            added.push_back(json::parse(*answer, nullptr, false));
        }
        EXPECT_EQ(program.finish().status, 0);
    }
    ASSERT_EQ(added.size(), 4u);
    EXPECT_EQ(added[0]["title"], "dentist");
    EXPECT_EQ(added[0]["day"], "2025-03-07");
    EXPECT_EQ(added[0]["minute"], 900);
    EXPECT_EQ(added[0]["id"].get<std::string>().size(), 36u);
    EXPECT_FALSE(added[0].contains("doneAt"));
    EXPECT_EQ(added[1], nullptr);
    EXPECT_EQ(added[2]["day"], "2025-03-06");
    EXPECT_FALSE(added[2].contains("minute"));
    EXPECT_EQ(added[3], json::parse(R"({"error": "not JSON"})"));
    // What was answered is what the file holds.
    EXPECT_EQ(json::parse(testing::readFile(file), nullptr, false),
              json::array({added[0], added[2]}));

    const auto lists = run(withReference({"lists", file.string()}));
    EXPECT_EQ(lists.status, 0);
    const json expected{{"overdue", json::array()},
                        {"timed", json::array()},
                        {"anytime", json::array({added[2]["id"]})},
                        {"done", json::array()},
                        {"upcoming", json::array({json{{"day", "2025-03-07"},
                                                       {"items", json::array({added[0]["id"]})}}})},
                        {"backlog", json::array()},
                        {"progress", json{{"done", 0}, {"total", 1}}},
                        {"nextTimed", nullptr},
                        {"dueNow", json::array()}};
    EXPECT_EQ(json::parse(lists.output, nullptr, false), expected) << lists.output;
}

TEST(KeloCoreCli, ListsSortsEveryTaskOfAFile) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    const auto task = [](char id, const char* more) {
        return std::string(R"({"id": "00000000-0000-4000-8000-00000000000)") + id +
               R"(", "title": "t", "created": "2025-03-01T10:00:00Z")" + more + "}";
    };
    testing::writeFile(
        file, "[" + task('1', R"(, "day": "2025-03-04")") + "," +
                  task('2', R"(, "day": "2025-03-06", "minute": 597)") + "," +
                  task('3', R"(, "day": "2025-03-06", "minute": 720)") + "," +
                  task('4', R"(, "day": "2025-03-06")") + "," +
                  task('5', R"(, "day": "2025-03-05", "doneAt": "2025-03-06T08:00:00Z")") + "," +
                  task('6', R"(, "day": "2025-03-10", "minute": 60)") + "," + task('7', "") + "," +
                  task('8', R"(, "doneAt": "2025-03-06T08:00:00Z")") + "]");
    const auto ending = run(withReference({"lists", file.string()}));
    EXPECT_EQ(ending.status, 0) << ending.errors;
    const auto id = [](char digit) {
        return std::string("00000000-0000-4000-8000-00000000000") + digit;
    };
    const json expected{
        {"overdue", json::array({id('1')})},
        {"timed", json::array({id('2'), id('3')})},
        {"anytime", json::array({id('4')})},
        {"done", json::array({id('5')})},
        {"upcoming", json::array({json{{"day", "2025-03-10"}, {"items", json::array({id('6')})}}})},
        {"backlog", json::array({id('7'), id('8')})},
        {"progress", json{{"done", 1}, {"total", 5}}},
        {"nextTimed", id('3')},
        {"dueNow", json::array({id('2')})},
    };
    EXPECT_EQ(json::parse(ending.output, nullptr, false), expected) << ending.output;
}

TEST(KeloCoreCli, ListsAndAddLeaveFilesTheyMayNotTouchAlone) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    testing::writeFile(file, "[{\"id\": 1}]");
    const auto unreadable = run(withReference({"lists", file.string()}));
    EXPECT_EQ(unreadable.status, 1);
    EXPECT_EQ(unreadable.output, "");
    EXPECT_EQ(std::count(unreadable.errors.begin(), unreadable.errors.end(), '\n'), 1);
    EXPECT_EQ(testing::readFile(file), "[{\"id\": 1}]");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);

    EXPECT_EQ(run(withReference({"lists", (folder / "missing.json").string()})).status, 1);

    // A running Kelo holds the lock: add refuses before touching the file.
    const fs::path held = folder / "held.json";
    const DataFileLock lock(held);
    ASSERT_TRUE(lock.isLocked());
    const auto refused = run(withReference({"add", held.string()}), R"("milk")");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("in use"), std::string::npos) << refused.errors;
    EXPECT_FALSE(fs::exists(held));
}

// Random lines: raw bytes, soups of JSON tokens, schedule objects and JSON strings of quick-add
// words. Every line
// must be answered with exactly one line, and the program must end normally.
std::string randomLine(std::mt19937& random) {
    static const std::vector<std::string> tokens = {
        "null",           "{",           "}",    "[", "]",    ":",        ",",     "\"",
        "\"day\"",        "\"minute\"",  "true", "0", "1439", "-1",       "1e400", "\"2025-03-07\"",
        "\"2025-02-30\"", "\"\\u00e9\"", "\\",   " ", "\xff", "\xc3\xa9", "\"x\""};
    static const std::vector<std::string> words = {
        "in",  "3",     "999",      "1000",    "days", "w",       "fri",  "friday", "at",
        "@",   "@9:30", "tomorrow", "next",    "week", "weekend", "this", "on",     "by",
        "due", "12am",  "13pm",     "0:15",    "jan",  "feb",     "29",   "31st",   "th",
        "-",   "—",     "morning",  "tonight", "pm",   "am",      "x",    ",",      "."};
    const auto pick = [&random](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    std::string line;
    const std::size_t length = pick(24);
    switch (pick(4)) {
    case 0:
        for (std::size_t i = 0; i < length * 3; ++i) {
            char byte = static_cast<char>(pick(256));
            line += byte == '\n' ? ' ' : byte;
        }
        break;
    case 1:
        for (std::size_t i = 0; i < length; ++i) {
            line += tokens[pick(tokens.size())];
        }
        break;
    case 2: {
        // Days near and far, loosely written, and minutes in and out of the day.
        const json days[] = {nullptr,      "2025-03-07", "2025-3-6",    "2025-02-30", "0999-01-01",
                             "9999-12-31", "-5-1-1",     "1000000-1-1", "someday",    7};
        const json minutes[] = {nullptr, 0, 59, 720, 1439, 1440, -1, 9.5, "900", ~0ull};
        const json schedule{
            {"day", days[pick(std::size(days))]},
            {"minute", pick(2) == 0 ? json(pick(1440)) : minutes[pick(std::size(minutes))]}};
        line = schedule.dump();
        break;
    }
    default:
        line = "\"";
        for (std::size_t i = 0; i < length; ++i) {
            line += words[pick(words.size())] + (pick(4) == 0 ? "\\t" : " ");
        }
        line += "\"";
    }
    return line;
}

TEST(KeloCoreCli, RandomLinesGetOneAnswerEach) {
    const testing::ScratchFolder folder;
    const std::vector<std::pair<std::vector<std::string>, int>> commands{
        {{"parse"}, 2000},  {{"parse", "--bucket", "backlog"}, 500},
        {{"when"}, 2000},   {{"phrase"}, 2000},
        {{"format"}, 2000}, {{"add", (folder / "todos.json").string()}, 300},
    };
    std::mt19937 random(1741253702);
    for (const auto& [arguments, lines] : commands) {
        KeloCore program(withReference(arguments));
        for (int i = 0; i < lines; ++i) {
            const std::string line = randomLine(random);
            const auto answer = program.ask(line);
            ASSERT_TRUE(answer.has_value()) << arguments[0] << " gave no answer to " << line;
            EXPECT_FALSE(json::parse(*answer, nullptr, false).is_discarded())
                << arguments[0] << " answered " << *answer;
        }
        const auto ending = program.finish();
        EXPECT_EQ(ending.status, 0) << arguments[0] << ": " << ending.errors;
        EXPECT_EQ(ending.output, "") << arguments[0];
    }
}

} // namespace
} // namespace kelo
