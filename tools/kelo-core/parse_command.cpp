#include "commands.h"
#include "json_io.h"
#include "json_string.h"
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
        JsonText line{R"({"title":)"};
        appendJsonString(line.text, parsed.title, Slash::plain);
        line.text += R"(,"day":)";
        appendCompact(line.text, parsed.day);
        line.text += R"(,"minute":)";
        appendCompact(line.text, parsed.minute);
        line.text += '}';
        return line;
    });
    return 0;
}

} // namespace kelo::cli
