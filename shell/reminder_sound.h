#pragma once

struct ca_context;

namespace kelo::shell {

// The reminder's sound from the desktop's sound theme, through libcanberra. Playing never blocks
// and never fails loudly: without a sound server or a matching sound nothing is heard.
class ReminderSound {
public:
    ReminderSound() = default;
    ~ReminderSound();
    ReminderSound(const ReminderSound&) = delete;
    ReminderSound& operator=(const ReminderSound&) = delete;

    void play();

private:
    // Connected at the first reminder, not at start-up: most runs never play one, and the
    // connection to the sound server costs memory and start-up time.
    ca_context* context_ = nullptr;
};

} // namespace kelo::shell
