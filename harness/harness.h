#pragma once

#include <QRectF>
#include <functional>

class QQuickWindow;

namespace kelo {
class IslandModel;
}

// The two runs that drive the whole application without a person, chosen by the environment:
// KELO_SNAPSHOT=<folder> renders thirteen states of the island to PNG files and quits;
// KELO_SELFTEST (with KELO_DATA naming a scratch data file) replays a scripted session, prints a
// PASS or FAIL line per expectation and exits with the result.
namespace kelo::Harness {

// What the runs need of the island on the desktop.
struct Panel {
    QQuickWindow* window = nullptr;
    // The window lets the pointer through and shows nothing from now on.
    std::function<void()> hide;
    // Where the island is drawn in the window now, for clicks.
    std::function<QRectF()> islandFrame;
};

// Starts whichever runs the environment asks for, snapshot first; returns at once. Without
// KELO_DATA a self-check refuses to run: it prints why and ends the process with status 2.
void start(IslandModel& model, const Panel& panel);

// Makes the application one that disturbs nobody: the window shows nothing and lets the pointer
// through, the model is isolated (no preference written, nothing activated, no sound) and its
// preferences are the defaults in memory, and Kelo gives up activation whenever it gets it.
void isolate(IslandModel& model, const Panel& panel);

} // namespace kelo::Harness
