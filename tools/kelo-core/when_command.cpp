#include "commands.h"
#include "json_io.h"
#include "quick_parse.h"

namespace kelo::cli {

int runWhen(const Invocation& invocation, std::istream& in, std::ostream& out) {
    answerLines(in, out, [&](const Json& input) -> Answer {
        if (!input.is_string()) {
            return LineError{"expected a JSON string"};
        }
        const auto when = QuickParse::when(input.get_ref<const std::string&>(), invocation.now,
                                           invocation.calendar);
        if (!when) {
            return Json(nullptr);
        }
        return Json{{"day", orNull(when->day)}, {"minute", orNull(when->minute)}};
    });
    return 0;
}

} // namespace kelo::cli
