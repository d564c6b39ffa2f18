#include "island_frame.h"

namespace kelo::shell {

IslandFrame::IslandFrame(std::function<void(const IslandRegions&)> write, QObject* parent)
    : QObject(parent)
    , write_(std::move(write)) {
    shrink_.setSingleShot(true);
    shrink_.setInterval(shrinkDelay);
    connect(&shrink_, &QTimer::timeout, this, [this] { show(shrinkTarget_); });
}

void IslandFrame::apply(const IslandRegions& target) {
    shrink_.stop();
    const IslandRegions grown{shown_.bounding + target.bounding, shown_.input + target.input};
    show(grown);
    if (grown != target) {
        shrinkTarget_ = target;
        shrink_.start();
    }
}

void IslandFrame::reset(const IslandRegions& target) {
    shrink_.stop();
    show(target);
}

void IslandFrame::show(const IslandRegions& regions) {
    if (regions != shown_) {
        shown_ = regions;
        write_(shown_);
    }
}

} // namespace kelo::shell
