#include "system_log.h"

#include <cstdio>
#include <string>
#include <syslog.h>

namespace kelo {

void systemLog(std::string_view line) {
    const std::string text(line);
    std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(stderr);
    syslog(LOG_USER | LOG_NOTICE, "%s", text.c_str());
}

} // namespace kelo
