#pragma once

#include <functional>
#include <string_view>

namespace kelo {

// Where Kelo's failure lines go. There are no levels: each line is one complete sentence that
// begins with "Kelo: ".
using LogSink = std::function<void(std::string_view line)>;

// Writes the line to standard error and to syslog (the journal keeps it). The text is passed as
// an argument, never as a format, so a per-cent sign in a path is printed as it is.
void systemLog(std::string_view line);

} // namespace kelo
