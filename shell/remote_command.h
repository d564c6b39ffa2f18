#pragma once

#include "startup.h"

#include <filesystem>

namespace kelo::shell {

// Carries out `kelo --toggle` or `kelo --add LINE` on the Kelo that runs with `dataFile`, over
// the session bus; the process's exit status. Without such a Kelo, or when the line gives no
// task, one log line and status 1.
[[nodiscard]] int runRemote(const RemoteRequest& request, const std::filesystem::path& dataFile);

} // namespace kelo::shell
