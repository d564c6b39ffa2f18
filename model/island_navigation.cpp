#include "island_model.h"

using namespace std::chrono_literals;

namespace kelo {

namespace {

// How long the pointer must rest on the closed island before it peeks.
constexpr auto peekDelay = 100ms;
// How long an idle open island waits for the pointer to come back.
constexpr auto idleCloseDelay = 700ms;
// How long an alert stays after the pointer left it.
constexpr auto alertLeaveDelay = 4000ms;

} // namespace

void IslandModel::setMode(const Mode& mode) {
    // Any explicit change of mode ends a scheduled one.
    pending_->cancel();
    if (mode == mode_) {
        return;
    }
    const bool wasOpen = mode_.kind() == ModeKind::Open;
    withSpring(Spring::Island, [&] { assign(mode_, mode, &IslandModel::modeChanged); });

    if (mode.kind() == ModeKind::Open) {
        // Opening always shows the tasks page, whatever was shown last time.
        setPage(Page::Tasks);
        if (!isolated_) {
            platform().makePanelKey();
        }
        requestFocus();
        return;
    }
    if (wasOpen) {
        setEditing(std::nullopt);
        setScheduling(std::nullopt);
    }
    if (platform().isActive() || platform().isPanelKey()) {
        giveBackKeyboard();
    }
}

void IslandModel::giveBackKeyboard() {
    Platform& desktop = platform();
    if (desktop.isActive()) {
        if (previousApp_ && !desktop.isThisApplication(*previousApp_) &&
            desktop.handBack(*previousApp_)) {
            previousApp_.reset();
            return;
        }
        desktop.deactivate();
    } else if (desktop.isPanelKey()) {
        desktop.releaseKeyboard();
    }
    previousApp_.reset();
}

void IslandModel::after(std::chrono::milliseconds delay, std::function<void()> work) {
    pending_->schedule(delay, std::move(work));
}

void IslandModel::hover(bool inside) {
    hovering_ = inside;
    switch (mode_.kind()) {
    case ModeKind::Closed:
        if (inside) {
            after(peekDelay, [this] {
                if (hovering_ && mode_.kind() == ModeKind::Closed) {
                    setMode(Mode::peek());
                    if (!isolated_) {
                        platform().performHaptic();
                    }
                }
            });
        }
        break;
    case ModeKind::Peek:
        if (inside) {
            pending_->cancel();
        } else {
            setMode(Mode::closed());
        }
        break;
    case ModeKind::Open:
        if (inside) {
            pending_->cancel();
        } else if (isIdle()) {
            after(idleCloseDelay, [this] {
                if (!hovering_ && isIdle()) {
                    setMode(Mode::closed());
                }
            });
        }
        break;
    case ModeKind::Alert:
        // Resting on an alert calls off its automatic close; leaving starts a shorter one.
        if (inside) {
            pending_->cancel();
        } else {
            after(alertLeaveDelay, [this] { setMode(Mode::closed()); });
        }
        break;
    }
}

void IslandModel::open(bool activate) {
    // An alert is always about a task of today.
    if (mode_.kind() == ModeKind::Alert && bucket_ != Bucket::today) {
        setBucket(Bucket::today);
    }
    if (activate && !isolated_) {
        previousApp_ = platform().frontmost();
        platform().activate();
    }
    setMode(Mode::open());
}

void IslandModel::hotKey() {
    if (mode_.kind() == ModeKind::Open) {
        setMode(Mode::closed());
        return;
    }
    if (bucket_ != Bucket::today) {
        setBucket(Bucket::today);
    }
    open(true);
}

void IslandModel::escape() {
    if (page_ == Page::Settings) {
        endEditing();
        withSpring(Spring::List, [this] { setPage(Page::Tasks); });
        return;
    }
    if (editing_ || scheduling_) {
        endEditing();
        return;
    }
    // The first Esc clears a draft, the second closes the island.
    if (draft_.isEmpty()) {
        setMode(Mode::closed());
        return;
    }
    setDraft(QString());
}

void IslandModel::endEditing() {
    if (!editing_ && !scheduling_) {
        return;
    }
    setEditing(std::nullopt);
    withSpring(Spring::List, [this] { setScheduling(std::nullopt); });
    requestFocus();
}

void IslandModel::toggleSettings() {
    endEditing();
    withSpring(Spring::List,
               [this] { setPage(page_ == Page::Tasks ? Page::Settings : Page::Tasks); });
}

void IslandModel::toggleScheduling(const QString& id) {
    const std::optional<Uuid> task = idFrom(id);
    withSpring(Spring::List, [&] { setScheduling(scheduling_ == task ? std::nullopt : task); });
}

void IslandModel::selectBucket(island::BucketTab tab) {
    withSpring(Spring::List, [&] { setBucketTab(tab); });
}

} // namespace kelo
