#include "commands.h"
#include "format.h"
#include "json_io.h"

namespace kelo::cli {

int runFormat(const Invocation& invocation, std::istream& in, std::ostream& out) {
    const Timestamp now = invocation.now;
    const Calendar& calendar = invocation.calendar;
    answerLines(in, out, [&](const Json& input) -> Answer {
        const auto schedule = readSchedule(input);
        if (const auto* error = std::get_if<LineError>(&schedule)) {
            return *error;
        }
        // Not a structured binding: clang 14 cannot capture one in the lambda below.
        const auto& day = std::get<Schedule>(schedule).day;
        const auto& minute = std::get<Schedule>(schedule).minute;
        const auto time = [&](bool compact) {
            return minute ? Json(Format::time(*minute, compact, calendar)) : Json(nullptr);
        };
        return Json{{"day", day ? Json(Format::day(*day, now, calendar)) : Json(nullptr)},
                    {"time", time(false)},
                    {"compact", time(true)},
                    {"when", Format::when(day, minute, now, calendar)}};
    });
    return 0;
}

} // namespace kelo::cli
