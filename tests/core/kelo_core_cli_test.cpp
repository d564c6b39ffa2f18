#include "data_file_lock.h"
#include "testing.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <regex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// The command at Thursday 2025-03-06, 10:00 in Berlin, with English texts.
std::string at10(const std::string& command) {
    return command + " --now 2025-03-06T10:00:00+01:00 --tz Europe/Berlin --locale en_US";
}

// Runs the command to its end, its input, output and errors in files; the prelude is shell
// commands run before it.
struct Outcome {
    int status; // 124 when it did not end within a minute
    std::string output;
    std::string errors;
};

Outcome run(const std::string& command, const std::string& input = "",
            const std::string& prelude = "") {
    const testing::ScratchFolder folder;
    testing::writeFile(folder / "in", input);
    const int status = std::system((prelude + "timeout 60 " KELO_CORE_PROGRAM " " + command + " <" +
                                    (folder / "in").string() + " >" + (folder / "out").string() +
                                    " 2>" + (folder / "err").string())
                                       .c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, testing::readFile(folder / "out"),
            testing::readFile(folder / "err")};
}

// Drives the command as Kelo does, through pipes: writes each line and waits at most ten seconds
// for its answer before the next; then closes the input and expects exit status 0.
std::vector<std::string> converse(const std::string& command,
                                  const std::vector<std::string>& lines) {
    std::signal(SIGPIPE, SIG_IGN); // a child that dies must fail the test, not kill it
    int in[2], out[2];
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipes");
    }
    const std::string shell = "exec " KELO_CORE_PROGRAM " " + command;
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::execl("/bin/sh", "sh", "-c", shell.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    FILE* output = ::fdopen(out[0], "r");
    std::vector<std::string> answers;
    for (const std::string& line : lines) {
        const std::string bytes = line + '\n';
        pollfd ready{out[0], POLLIN, 0};
        char answer[4096];
        if (::write(in[1], bytes.data(), bytes.size()) != std::ssize(bytes) ||
            ::poll(&ready, 1, 10'000) != 1 || !std::fgets(answer, sizeof answer, output)) {
            ADD_FAILURE() << command << " gave no answer to " << line;
            break;
        }
        answers.emplace_back(answer, std::strlen(answer) - 1);
    }
    ::close(in[1]);
    EXPECT_EQ(std::fgetc(output), EOF) << command << " wrote more than one answer to a line";
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << command;
    std::fclose(output);
    return answers;
}

// Each input line with its answer, compared as JSON values.
void expectAnswers(const std::string& command,
                   const std::vector<std::pair<std::string, const char*>>& exchanges) {
    std::vector<std::string> lines;
    for (const auto& [line, answer] : exchanges) {
        lines.push_back(line);
    }
    const auto answers = converse(command, lines);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        EXPECT_EQ(json::parse(answers[i], nullptr, false), json::parse(exchanges[i].second))
            << command << ": " << lines[i] << " -> " << answers[i];
    }
}

TEST(KeloCoreCli, LineCommandsAnswerEachLineAndReadOnAfterBadOnes) {
    expectAnswers(
        at10("parse"),
        {{R"("dentist fri 3pm")", R"({"title": "dentist", "day": "2025-03-07", "minute": 900})"},
         {"  \t", R"({"error": "empty line"})"},
         {"dentist fri", R"({"error": "not JSON"})"},
         {"\"\xff\"", R"({"error": "not JSON"})"},
         {R"("dentist\nfri 3pm")", R"({"title": "dentist", "day": "2025-03-07", "minute": 900})"},
         {"42", R"({"error": "expected a JSON string"})"}});
    expectAnswers(at10("parse --bucket=backlog"),
                  {{R"("milk 5pm")", R"({"title": "milk", "day": "2025-03-06", "minute": 1020})"}});
    expectAnswers(at10("when"), {{R"("Tomorrow 3PM")", R"({"day": "2025-03-07", "minute": 900})"},
                                 {R"("dentist")", "null"}});
    expectAnswers(at10("phrase"),
                  {{R"({"day": "2025-03-08", "minute": 570})", R"("saturday 9:30am")"},
                   {R"({"minute": 1440})",
                    R"({"error": "minute must be a whole number from 0 to 1439, or null"})"}});
    expectAnswers(
        at10("format"),
        {{R"({"day": "2025-03-06", "minute": 1020})",
          "{\"day\": \"Today\", \"time\": \"5:00\u202fPM\", \"compact\": \"5:00\", "
          "\"when\": \"Today · 5:00\u202fPM\"}"},
         {R"("today")", R"({"error": "expected an object {\"day\": ..., \"minute\": ...}"})"}});
    // 08:30 on Friday in Tokyo, in German.
    expectAnswers(
        "format --now 2025-03-06T23:30:00Z --tz Asia/Tokyo --locale de_DE",
        {{R"({"day": "2025-03-07", "minute": 1020})",
          R"({"day": "Today", "time": "17:00", "compact": "17:00", "when": "Today · 17:00"})"}});
}

TEST(KeloCoreCli, BadCommandLinesExitWithStatus2AndUsage) {
    for (const char* line :
         {"", "frobnicate", "parse extra", "lists", "add a.json b.json", "--colour red parse",
          "parse --now", "parse --now yesterday", "parse --now 2025-03-06T10:00:00",
          "parse --tz Mars/Olympus_Mons", "parse --locale xx_YY", "parse --bucket someday"}) {
        const Outcome ran = run(line);
        EXPECT_EQ(ran.status, 2) << line;
        EXPECT_NE(ran.errors.find("Usage: kelo-core"), std::string::npos) << line;
        EXPECT_EQ(ran.output, "") << line;
    }
    const Outcome help = run("parse --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.starts_with("Usage: kelo-core")) << help.output;
    EXPECT_EQ(run("--version").output, "kelo-core " KELO_VERSION "\n");
}

TEST(KeloCoreCli, AddAnswersWithWhatItWroteToTheFile) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    const auto answers = converse(at10("add " + file.string()),
                                  {R"("dentist fri 3pm")", R"("  ")", R"("milk")", "milk"});
    ASSERT_EQ(answers.size(), 4u);
    const json dentist = json::parse(answers[0], nullptr, false);
    const json milk = json::parse(answers[2], nullptr, false);
    EXPECT_EQ(dentist["title"], "dentist");
    EXPECT_EQ(dentist["day"], "2025-03-07");
    EXPECT_EQ(dentist["minute"], 900);
    EXPECT_EQ(answers[1], "null") << "a blank title adds nothing";
    EXPECT_EQ(milk["day"], "2025-03-06") << "the Today tab by default";
    EXPECT_EQ(json::parse(answers[3], nullptr, false), json::parse(R"({"error": "not JSON"})"));
    EXPECT_EQ(json::parse(testing::readFile(file), nullptr, false), json::array({dentist, milk}));

    // A file size limit (one block: the answer fits, the list does not) fails the save as a full
    // disk would. The task is answered with an error, and nothing after it is read, so no later
    // save carries it into the file.
    const std::string longTitle = '"' + std::string(2000, 'b') + "\"\n";
    const Outcome full =
        run("add " + file.string(), longTitle + "\"eggs\"\n", "trap '' XFSZ; ulimit -f 1; ");
    EXPECT_EQ(full.status, 1);
    EXPECT_TRUE(full.output.starts_with(R"({"error":"could not save )")) << full.output;
    EXPECT_EQ(std::count(full.output.begin(), full.output.end(), '\n'), 1) << full.output;
    EXPECT_EQ(json::parse(testing::readFile(file), nullptr, false), json::array({dentist, milk}));
}

// "#n" stands for the id 00000000-0000-4000-8000-00000000000n.
json withIds(const char* text) {
    return json::parse(
        std::regex_replace(text, std::regex("#(\\d)"), "00000000-0000-4000-8000-00000000000$1"));
}

TEST(KeloCoreCli, ListsPrintsTheIdsInEachList) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    json todos = withIds(R"([{"id": "#1", "day": "2025-03-04"},
        {"id": "#2", "day": "2025-03-06", "minute": 597}, {"id": "#3", "day": "2025-03-06", "minute": 720},
        {"id": "#4", "day": "2025-03-06"}, {"id": "#5", "day": "2025-03-05", "doneAt": "2025-03-06T08:00:00Z"},
        {"id": "#6", "day": "2025-03-10", "minute": 60}, {"id": "#7"}])");
    for (json& todo : todos) {
        todo.update({{"title", "t"}, {"created", "2025-03-01T10:00:00Z"}});
    }
    testing::writeFile(file, todos.dump());
    const Outcome ran = run(at10("lists " + file.string()));
    EXPECT_EQ(ran.status, 0) << ran.errors;
    EXPECT_EQ(json::parse(ran.output, nullptr, false), withIds(R"({"overdue": ["#1"],
        "timed": ["#2", "#3"], "anytime": ["#4"], "done": ["#5"],
        "upcoming": [{"day": "2025-03-10", "items": ["#6"]}], "backlog": ["#7"],
        "progress": {"done": 1, "total": 5}, "nextTimed": "#3", "dueNow": ["#2"]})"))
        << ran.output;
}

TEST(KeloCoreCli, ListsAndAddLeaveFilesTheyMayNotTouchAlone) {
    const testing::ScratchFolder folder;
    const fs::path file = folder / "todos.json";
    testing::writeFile(file, "[{\"id\": 1}]");
    const Outcome unreadable = run(at10("lists " + file.string()));
    EXPECT_EQ(unreadable.status, 1);
    EXPECT_EQ(unreadable.output, "");
    EXPECT_EQ(std::count(unreadable.errors.begin(), unreadable.errors.end(), '\n'), 1);
    EXPECT_EQ(testing::readFile(file), "[{\"id\": 1}]");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), fs::directory_iterator()), 1);
    EXPECT_EQ(run(at10("lists " + (folder / "missing.json").string())).status, 1);
    ASSERT_EQ(::mkfifo((folder / "fifo.json").c_str(), 0600), 0);
    EXPECT_EQ(run(at10("lists " + (folder / "fifo.json").string())).status, 1) << "not waited on";

    // A running Kelo holds the lock: add refuses before touching the file.
    const fs::path held = folder / "held.json";
    const DataFileLock lock(held);
    ASSERT_TRUE(lock.isLocked());
    const Outcome refused = run(at10("add " + held.string()), "\"milk\"\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_NE(refused.errors.find("in use"), std::string::npos) << refused.errors;
    EXPECT_FALSE(fs::exists(held));
}

} // namespace
} // namespace kelo
