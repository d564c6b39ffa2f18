#include "forward_add.h"

#include "json_io.h"
#include "running_kelo.h"
#include "todo_json.h"

#include <algorithm>
#include <iostream>

namespace kelo::cli {
namespace {

int refuse(const Invocation& invocation, const std::string& reason) {
    std::cerr << "kelo-core: " << invocation.file.string() << " is in use by a running Kelo ("
              << reason << "); nothing was added\n";
    return 1;
}

// The task as the file Kelo has just saved holds it.
Answer savedTask(const std::filesystem::path& file, const std::string& id) {
    const auto read = readTodosFile(file);
    if (const auto* error = std::get_if<std::string>(&read)) {
        return LineError{"Kelo added the task, but the data file cannot be read (" + *error + ")"};
    }
    const auto& todos = std::get<std::vector<Todo>>(read);
    const auto found = std::find_if(todos.begin(), todos.end(),
                                    [&id](const Todo& todo) { return todo.id.text() == id; });
    if (found == todos.end()) {
        return LineError{"Kelo added the task, but could not save it"};
    }
    return taskObject(*found);
}

} // namespace

int forwardAdd(const Invocation& invocation, std::istream& in, std::ostream& out) {
    if (invocation.bucket && *invocation.bucket != Bucket::today) {
        const char* tab = *invocation.bucket == Bucket::upcoming ? "upcoming" : "backlog";
        return refuse(invocation, std::string("it adds lines as its Today tab does, so --bucket ") +
                                      tab + " cannot be forwarded");
    }
    auto found = bus::RunningKelo::find(invocation.file);
    if (const auto* failure = std::get_if<bus::Failure>(&found)) {
        return refuse(invocation, failure->reason);
    }
    auto& kelo = std::get<bus::RunningKelo>(found);
    answerLines(in, out, [&](const Json& input) -> Answer {
        if (!input.is_string()) {
            return LineError{"expected a JSON string"};
        }
        const auto added = kelo.add(input.get_ref<const std::string&>());
        if (const auto* failure = std::get_if<bus::Failure>(&added)) {
            return LineError{failure->reason};
        }
        const auto& id = std::get<std::string>(added);
        return id.empty() ? Json(nullptr) : savedTask(invocation.file, id);
    });
    return 0;
}

} // namespace kelo::cli
