#include "remote_command.h"

#include "running_kelo.h"
#include "system_log.h"

namespace kelo::shell {
namespace {

int fail(const std::string& sentence) {
    systemLog("Kelo: " + sentence + ".");
    return 1;
}

} // namespace

int runRemote(const RemoteRequest& request, const std::filesystem::path& dataFile) {
    auto found = bus::RunningKelo::find(dataFile);
    if (const auto* failure = std::get_if<bus::Failure>(&found)) {
        return fail(failure->reason);
    }
    auto& kelo = std::get<bus::RunningKelo>(found);
    if (request.kind == RemoteRequest::Kind::toggle) {
        const auto done = kelo.toggle();
        const auto* failure = std::get_if<bus::Failure>(&done);
        return failure ? fail(failure->reason) : 0;
    }
    const auto added = kelo.add(request.line);
    if (const auto* failure = std::get_if<bus::Failure>(&added)) {
        return fail(failure->reason);
    }
    if (std::get<std::string>(added).empty()) {
        return fail("\"" + request.line + "\" has no title; nothing was added");
    }
    return 0;
}

} // namespace kelo::shell
