#include "testing.h"

#include <csignal>
#include <nlohmann/json.hpp>
#include <regex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

// kelo-core's own part: its command line, its exit statuses and error lines, one answer for each
// line read, and each command wired to the core, whose rules have tests of their own.
namespace kelo {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Lines = std::vector<std::string>;

// Thursday 2025-03-06, 10:00 in Berlin, with English texts.
const std::string at10 = " --now 2025-03-06T10:00:00+01:00 --tz Europe/Berlin --locale en_US";

struct Session {
    int status; // 124 when it did not end within a minute
    Lines output;
    std::string errors;
};

// Drives the command as Kelo does, through a pipe: writes each line and waits at most ten seconds
// for its answer before the next. The prelude is shell commands run before it.
Session drive(const std::string& command, const Lines& lines = {},
              const std::string& prelude = "") {
    std::signal(SIGPIPE, SIG_IGN); // a child that dies must fail the test, not kill it
    const testing::ScratchFolder folder;
    const std::string out = (folder / "out").string();
    const std::string errors = (folder / "errors").string();
    FILE* in = ::popen(
        (prelude + "timeout 60 " KELO_CORE_PROGRAM " " + command + " >" + out + " 2>" + errors)
            .c_str(),
        "w");
    const auto answers = [&] { return std::ranges::count(testing::readFile(out), '\n'); };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::fputs((lines[i] + '\n').c_str(), in);
        std::fflush(in);
        for (int wait = 0; wait < 1000 && std::cmp_less_equal(answers(), i); ++wait) {
            ::usleep(10'000);
        }
        if (std::cmp_less_equal(answers(), i)) {
            ADD_FAILURE() << command << " gave no answer to " << lines[i];
            break;
        }
    }
    const int status = ::pclose(in);
    Session session{WIFEXITED(status) ? WEXITSTATUS(status) : -1, {}, testing::readFile(errors)};
    std::istringstream output(testing::readFile(out));
    for (std::string line; std::getline(output, line);) {
        session.output.push_back(line);
    }
    return session;
}

TEST(KeloCoreCli, LineCommandsAnswerEachLineAndReadOnAfterBadOnes) {
    // 08:30 on Friday in Tokyo, in German: the zone and the locale are the ones asked for.
    const std::string tokyo = " --now 2025-03-06T23:30:00Z --tz Asia/Tokyo --locale de_DE";
    const std::tuple<std::string, Lines, Lines> sessions[] = {
        {"parse" + at10,
         {R"("dentist fri 3pm")", "  \t", "dentist fri", "42"},
         {R"({"title":"dentist","day":"2025-03-07","minute":900})", R"({"error":"empty line"})",
          R"({"error":"not JSON"})", R"({"error":"expected a JSON string"})"}},
        {"parse --bucket=backlog" + at10,
         {R"("milk 5pm")"},
         {R"({"title":"milk","day":"2025-03-06","minute":1020})"}},
        {"when" + at10,
         {R"("Tomorrow 3PM")", R"("dentist")"},
         {R"({"day":"2025-03-07","minute":900})", "null"}},
        {"phrase" + at10,
         {R"({"day": "2025-03-08", "minute": 570})", R"({"minute": 1440})"},
         {R"("saturday 9:30am")",
          R"({"error":"minute must be a whole number from 0 to 1439, or null"})"}},
        {"format" + tokyo,
         {R"({"day": "2025-03-07", "minute": 1020})", R"("today")"},
         {R"({"day":"Today","time":"17:00","compact":"17:00","when":"Today · 17:00"})",
          R"({"error":"expected an object {\"day\": ..., \"minute\": ...}"})"}},
    };
    for (const auto& [command, lines, answers] : sessions) {
        const Session ran = drive(command, lines);
        EXPECT_EQ(ran.status, 0) << command;
        EXPECT_EQ(ran.output, answers) << command;
    }
}

TEST(KeloCoreCli, BadCommandLinesExitWithStatus2AndUsage) {
    for (const char* line :
         {"", "frobnicate", "parse extra", "lists", "add a.json b.json", "--colour red parse",
          "parse --now", "parse --now yesterday", "parse --now 2025-03-06T10:00:00",
          "parse --tz Mars/Olympus_Mons", "parse --locale xx_YY", "parse --bucket someday"}) {
        const Session ran = drive(line);
        EXPECT_EQ(ran.status, 2) << line;
        EXPECT_NE(ran.errors.find("Usage: kelo-core"), std::string::npos) << line;
        EXPECT_TRUE(ran.output.empty()) << line;
    }
    const Session help = drive("parse --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.at(0), "Usage: kelo-core [options] COMMAND [FILE]");
    EXPECT_EQ(drive("--version").output, Lines{"kelo-core " KELO_VERSION});
}

TEST(KeloCoreCli, AddAnswersWithWhatItWroteAndStopsAtAFailedSave) {
    const testing::ScratchFolder folder;
    const std::string file = (folder / "todos.json").string();
    const Session added =
        drive("add " + file + at10, {R"("dentist fri 3pm")", "\"  \"", "\"milk\""});
    ASSERT_EQ(added.output.size(), 3u);
    EXPECT_EQ(added.output[1], "null") << "a blank title adds nothing";
    const json tasks = json::parse('[' + added.output[0] + ',' + added.output[2] + ']');
    EXPECT_EQ(tasks[0]["day"], "2025-03-07");
    EXPECT_EQ(tasks[1]["day"], "2025-03-06") << "the Today tab by default";
    EXPECT_EQ(json::parse(testing::readFile(file)), tasks);

    // A file size limit (one block: the answer fits, the list does not) fails the save as a full
    // disk would. The task is answered with an error, and nothing after it is read, so no later
    // save carries it into the file.
    const Session full = drive("add " + file, {'"' + std::string(2000, 'b') + "\"\n\"eggs\""},
                               "trap '' XFSZ; ulimit -f 1; ");
    EXPECT_EQ(full.status, 1);
    ASSERT_EQ(full.output.size(), 1u);
    EXPECT_TRUE(full.output[0].starts_with(R"({"error":"could not save )")) << full.output[0];
    EXPECT_EQ(json::parse(testing::readFile(file)), tasks);
}

// One task for each list, so that each list is shown to come from its own function. A file that
// cannot be read is only reported: lists never moves, backs up or waits on anything.
TEST(KeloCoreCli, ListsPrintsTheIdsInEachListAndOnlyReadsTheFile) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    const std::vector<Todo> todos = {
        testing::todo("", "2025-03-04"),
        testing::todo("", "2025-03-06", 597),
        testing::todo("", "2025-03-06", 720),
        testing::todo("", "2025-03-06"),
        testing::todo("", "2025-03-05", {}, testing::utc("2025-03-06T08:00:00Z")),
        testing::todo("", "2025-03-10", 60),
        testing::todo("")};
    testing::writeFile(file, encodeTodos(todos));
    // "#n" stands for the id of todos[n].
    std::string expected =
        R"({"overdue":["#0"],"timed":["#1","#2"],"anytime":["#3"],"done":["#4"],"upcoming":)"
        R"([{"day":"2025-03-10","items":["#5"]}],"backlog":["#6"],"progress":{"done":1,"total":5},)"
        R"("nextTimed":"#2","dueNow":["#1"]})";
    for (std::size_t n = 0; n < todos.size(); ++n) {
        expected =
            std::regex_replace(expected, std::regex("#" + std::to_string(n)), todos[n].id.text());
    }
    const Session ran = drive("lists " + file.string() + at10);
    EXPECT_EQ(ran.status, 0) << ran.errors;
    EXPECT_EQ(ran.output, Lines{expected});

    testing::writeFile(file, "[{\"id\": 1}]");
    ASSERT_EQ(::mkfifo((folder / "fifo.json").c_str(), 0600), 0);
    for (const char* name : {"todos.json", "missing.json", "fifo.json"}) {
        const Session unreadable = drive("lists " + (folder / name).string() + at10);
        EXPECT_EQ(unreadable.status, 1) << name;
        EXPECT_TRUE(unreadable.output.empty()) << name;
        EXPECT_EQ(std::ranges::count(unreadable.errors, '\n'), 1) << name;
    }
    EXPECT_EQ(testing::readFile(file), "[{\"id\": 1}]");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), fs::directory_iterator()), 2);
}

} // namespace
} // namespace kelo
