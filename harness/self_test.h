#pragma once

#include "harness.h"

namespace kelo::Harness {

// The self-check: 24 steps, 0.8 s apart, each checking what the previous one did and doing the
// next thing, as a person would with the hot key, the keyboard, the pointer and the clock. Every
// expectation prints "PASS <label>" or "FAIL <label>"; the last step prints "ALL PASS" or the
// number of failures and ends the process with status 0 or 1.
void startSelfTest(IslandModel& model, const Panel& panel);

} // namespace kelo::Harness
