#include "sd_bus_library.h"

#include <dlfcn.h>
#include <optional>

namespace kelo::bus {

namespace {

template <typename Function> bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

std::optional<SdBusLibrary> load() {
    // Never closed: the calls stay valid for the rest of the process.
    void* library = dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        return std::nullopt;
    }
    SdBusLibrary calls{};
    const bool complete = find(library, "sd_bus_open_user", calls.openUser) &&
                          find(library, "sd_bus_flush_close_unref", calls.flushCloseUnref) &&
                          find(library, "sd_bus_call_method", calls.callMethod) &&
                          find(library, "sd_bus_message_new_method_call", calls.newMethodCall) &&
                          find(library, "sd_bus_message_append", calls.append) &&
                          find(library, "sd_bus_call", calls.call) &&
                          find(library, "sd_bus_message_read", calls.read) &&
                          find(library, "sd_bus_message_unref", calls.unref) &&
                          find(library, "sd_bus_error_is_set", calls.errorIsSet) &&
                          find(library, "sd_bus_error_free", calls.errorFree);
    return complete ? std::optional(calls) : std::nullopt;
}

} // namespace

const SdBusLibrary* SdBusLibrary::get() {
    static const std::optional<SdBusLibrary> calls = load();
    return calls ? &*calls : nullptr;
}

} // namespace kelo::bus
