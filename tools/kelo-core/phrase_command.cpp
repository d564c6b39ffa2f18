#include "commands.h"
#include "json_io.h"
#include "quick_parse.h"

namespace kelo::cli {

int runPhrase(const Invocation& invocation, std::istream& in, std::ostream& out) {
    answerLines(in, out, [&](const Json& input) -> Answer {
        const auto schedule = readSchedule(input);
        if (const auto* error = std::get_if<LineError>(&schedule)) {
            return *error;
        }
        const auto& [day, minute] = std::get<Schedule>(schedule);
        return Json(QuickParse::phrase(day, minute, invocation.now, invocation.calendar));
    });
    return 0;
}

} // namespace kelo::cli
