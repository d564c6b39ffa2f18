#include "options.h"

#include <algorithm>
#include <array>
#include <unicode/locid.h>

namespace kelo::cli {

namespace {

struct CommandName {
    std::string_view name;
    Command command;
    bool takesFile;
};

constexpr std::array<CommandName, 6> commands{{
    {"parse", Command::parse, false},
    {"when", Command::when, false},
    {"phrase", Command::phrase, false},
    {"format", Command::format, false},
    {"add", Command::add, true},
    {"lists", Command::lists, true},
}};

struct Settings {
    std::optional<std::string_view> now;
    std::optional<std::string_view> zone;
    std::optional<std::string_view> locale;
    std::optional<std::string_view> bucket;
    std::vector<std::string_view> positional;
};

std::optional<Bucket> bucketNamed(std::string_view name) {
    if (name == "today") {
        return Bucket::today;
    }
    if (name == "upcoming") {
        return Bucket::upcoming;
    }
    if (name == "backlog") {
        return Bucket::backlog;
    }
    return std::nullopt;
}

// ICU accepts any well-formed identifier and quietly falls back to the root locale's data, so
// a mistyped language would give English-looking texts. Only languages ICU has data for count.
bool hasLocaleData(std::string_view id) {
    const icu::Locale wanted(std::string(id).c_str());
    if (wanted.isBogus() || *wanted.getLanguage() == '\0') {
        return false;
    }
    int32_t count = 0;
    const icu::Locale* available = icu::Locale::getAvailableLocales(count);
    for (int32_t i = 0; i < count; ++i) {
        if (std::string_view(available[i].getLanguage()) == wanted.getLanguage()) {
            return true;
        }
    }
    return false;
}

// Splits the arguments into option values and positional words.
std::variant<Settings, UsageError> readSettings(const std::vector<std::string_view>& arguments) {
    Settings settings;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (!argument.starts_with("--")) {
            settings.positional.push_back(argument);
            continue;
        }
        const auto equals = argument.find('=');
        const std::string_view name = argument.substr(0, equals);
        std::optional<std::string_view>* slot = name == "--now"      ? &settings.now
                                                : name == "--tz"     ? &settings.zone
                                                : name == "--locale" ? &settings.locale
                                                : name == "--bucket" ? &settings.bucket
                                                                     : nullptr;
        if (slot == nullptr) {
            return UsageError{"unknown option " + std::string(name)};
        }
        if (equals != std::string_view::npos) {
            *slot = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size()) {
            *slot = arguments[++i];
        } else {
            return UsageError{std::string(name) + " needs a value"};
        }
    }
    return settings;
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string_view>& arguments) {
    for (const std::string_view argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            return ShowHelp{};
        }
        if (argument == "--version") {
            return ShowVersion{};
        }
    }
    auto read = readSettings(arguments);
    if (auto* error = std::get_if<UsageError>(&read)) {
        return std::move(*error);
    }
    const Settings& settings = std::get<Settings>(read);

    if (settings.positional.empty()) {
        return UsageError{"no command given"};
    }
    const auto known = std::find_if(commands.begin(), commands.end(), [&](const CommandName& c) {
        return c.name == settings.positional.front();
    });
    if (known == commands.end()) {
        return UsageError{"unknown command " + std::string(settings.positional.front())};
    }
    const std::size_t wanted = known->takesFile ? 2 : 1;
    if (settings.positional.size() != wanted ||
        (known->takesFile && settings.positional[1].empty())) {
        return UsageError{std::string(known->name) +
                          (known->takesFile ? " takes one data file" : " takes no file")};
    }

    std::optional<Bucket> bucket;
    if (settings.bucket) {
        bucket = bucketNamed(*settings.bucket);
        if (!bucket) {
            return UsageError{"--bucket must be today, upcoming or backlog"};
        }
    }
    Timestamp now = currentTime();
    if (settings.now) {
        const auto parsed = parseInternetDateTime(*settings.now);
        if (!parsed) {
            return UsageError{"--now must look like 2025-03-06T10:00:00+01:00 or ...Z"};
        }
        now = *parsed;
    }
    if (settings.locale && !hasLocaleData(*settings.locale)) {
        return UsageError{"unknown locale " + std::string(*settings.locale)};
    }
    // The user's own calendar is taken as it is: ICU may report a zone it cannot build again
    // by name (Etc/Unknown without /etc/localtime), and that is still the user's clock.
    std::optional<Calendar> calendar = Calendar::current();
    const std::string zone = settings.zone ? std::string(*settings.zone) : calendar->zoneId();
    if (settings.zone || settings.locale) {
        calendar =
            Calendar::make(zone, settings.locale ? *settings.locale : calendar->locale().getName());
    }
    if (!calendar) {
        return UsageError{"unknown time zone " + zone};
    }
    const std::string_view file = known->takesFile ? settings.positional[1] : std::string_view();
    return Invocation{known->command, std::filesystem::path(file), now, std::move(*calendar),
                      bucket};
}

std::string helpText() {
    return R"(Usage: kelo-core [options] COMMAND [FILE]

Kelo's task core on the command line. The line commands read one JSON value per input
line and answer each with exactly one compact JSON line, flushed whenever no more input
waits, so that another program can drive them as a co-process. A line that is blank, not JSON or of the wrong
shape is answered with {"error": "..."} and the command goes on.

Commands:
  parse        "dentist fri 3pm" -> {"title": ..., "day": "YYYY-MM-DD"|null, "minute": n|null};
               with --bucket, the plan for a line typed in that tab
  when         "tomorrow 3pm" -> {"day": ..., "minute": ...}, or null when it is no phrase
  phrase       {"day": ..., "minute": ...} -> "tomorrow 3pm"
  format       {"day": ..., "minute": ...} -> {"day", "time", "compact", "when"} display texts
  add FILE     "dentist fri 3pm" -> the task added to the data file as the file holds it,
               or null for a blank line; the day defaults as in the tab of --bucket (today)
  lists FILE   prints the lists of the data file once; the file is only read

Options:
  --now INSTANT    the clock reading, e.g. 2025-03-06T10:00:00+01:00 or 2025-03-06T09:00:00Z
                   (whole seconds; default: the current time)
  --tz ZONE        IANA time zone, e.g. Europe/Berlin (default: the system's)
  --locale ID      locale of the display texts, e.g. en_US, de_DE (default: the user's)
  --bucket TAB     today, upcoming or backlog
  --help           this text
  --version        the version

Exit status: 0 when done, 1 when the data file cannot be read, is in use, or a task
could not be saved (add stops there), 2 for a bad command line.
)";
}

} // namespace kelo::cli
