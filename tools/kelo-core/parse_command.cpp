#include "commands.h"
#include "json_io.h"
#include "quick_parse.h"

namespace kelo::cli {

int runParse(const Invocation& invocation, std::istream& in, std::ostream& out) {
    answerLines(in, out, [&](const Json& input) -> Answer {
        if (!input.is_string()) {
            return LineError{"expected a JSON string"};
        }
        const auto& text = input.get_ref<const std::string&>();
        const Parsed parsed =
            invocation.bucket
                ? QuickParse::plan(text, *invocation.bucket, invocation.now, invocation.calendar)
                : QuickParse::parse(text, invocation.now, invocation.calendar);
        return Json{{"title", parsed.title},
                    {"day", orNull(parsed.day)},
                    {"minute", orNull(parsed.minute)}};
    });
    return 0;
}

} // namespace kelo::cli
