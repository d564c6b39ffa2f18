#pragma once

#include <systemd/sd-bus.h>

namespace kelo::bus {

// The few calls of libsystemd's sd-bus that talk to a running Kelo, looked up when first wanted.
// Most kelo-core runs never talk to Kelo, and loading libsystemd with its own libraries would
// add a few milliseconds to every start of a program that is run once per line by some scripts.
struct SdBusLibrary {
    decltype(&sd_bus_open_user) openUser;
    decltype(&sd_bus_flush_close_unref) flushCloseUnref;
    decltype(&sd_bus_call_method) callMethod;
    decltype(&sd_bus_message_new_method_call) newMethodCall;
    decltype(&sd_bus_message_append) append;
    decltype(&sd_bus_call) call;
    decltype(&sd_bus_message_read) read;
    decltype(&sd_bus_message_unref) unref;
    decltype(&sd_bus_error_is_set) errorIsSet;
    decltype(&sd_bus_error_free) errorFree;

    // Null when libsystemd cannot be loaded or lacks one of the calls.
    [[nodiscard]] static const SdBusLibrary* get();
};

} // namespace kelo::bus
