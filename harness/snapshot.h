#pragma once

#include "harness.h"

#include <QString>

namespace kelo::Harness {

// The snapshot run: thirteen characteristic states of the island, one every 1.2 s (time for the
// springs to settle), each saved as "<name>.png" in the folder; then Kelo quits. Errors (a
// folder that cannot be made, a file that cannot be written) are ignored: a missing image is
// their only sign.
void startSnapshot(IslandModel& model, const Panel& panel, const QString& folder);

} // namespace kelo::Harness
