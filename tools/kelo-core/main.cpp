#include "commands.h"
#include "options.h"

#include <iostream>

namespace {

using namespace kelo::cli;

template <typename... Visitors> struct Overloaded : Visitors... { using Visitors::operator()...; };
// Clang 14 does not deduce an aggregate's arguments from its initialiser by itself.
template <typename... Visitors> Overloaded(Visitors...) -> Overloaded<Visitors...>;

int run(const Invocation& invocation) {
    switch (invocation.command) {
    case Command::parse:
        return runParse(invocation, std::cin, std::cout);
    case Command::when:
        return runWhen(invocation, std::cin, std::cout);
    case Command::phrase:
        return runPhrase(invocation, std::cin, std::cout);
    case Command::format:
        return runFormat(invocation, std::cin, std::cout);
    case Command::add:
        return runAdd(invocation, std::cin, std::cout);
    case Command::lists:
        return runLists(invocation, std::cout);
    }
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    // Answers are flushed when no more input waits, not before every read.
    std::cin.tie(nullptr);
    const CommandLine commandLine =
        readCommandLine(std::vector<std::string_view>(argv + 1, argv + argc));
    return std::visit(Overloaded{
                          [](const Invocation& invocation) { return run(invocation); },
                          [](const ShowHelp&) {
                              std::cout << helpText();
                              return 0;
                          },
                          [](const ShowVersion&) {
                              std::cout << "kelo-core " KELO_VERSION "\n";
                              return 0;
                          },
                          [](const UsageError& error) {
                              std::cerr << "kelo-core: " << error.message << "\n\n" << helpText();
                              return 2;
                          },
                      },
                      commandLine);
}
