#include "reminder_sound.h"

#include <canberra.h>
#include <initializer_list>

namespace kelo::shell {

ReminderSound::~ReminderSound() {
    if (context_) {
        ca_context_destroy(context_);
    }
}

void ReminderSound::play() {
    if (!context_) {
        if (ca_context_create(&context_) != CA_SUCCESS) {
            context_ = nullptr;
            return;
        }
        ca_context_change_props(context_, CA_PROP_APPLICATION_NAME, "Kelo", CA_PROP_APPLICATION_ID,
                                "kelo", nullptr);
    }
    // The freedesktop theme names the sound of a finished timer; themes without it mostly have
    // the instant-message one.
    for (const char* event : {"alarm-clock-elapsed", "message-new-instant"}) {
        if (ca_context_play(context_, 0, CA_PROP_EVENT_ID, event, CA_PROP_EVENT_DESCRIPTION,
                            "Kelo reminder", nullptr) == CA_SUCCESS) {
            return;
        }
    }
}

} // namespace kelo::shell
