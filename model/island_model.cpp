#include "island_model.h"

#include "island_metrics.h"

#include <QSettings>
#include <format.h>
#include <lists.h>

using namespace Qt::StringLiterals;

namespace kelo {

namespace {

std::unique_ptr<QSettings> openSettings(const std::optional<QString>& file) {
    if (file) {
        return std::make_unique<QSettings>(*file, QSettings::IniFormat);
    }
    return std::make_unique<QSettings>(u"Kelo"_s, u"Kelo"_s);
}

} // namespace

IslandModel::IslandModel(std::unique_ptr<TodoStore> store, QObject* parent)
    : IslandModel(std::move(store), Options{}, parent) {}

IslandModel::IslandModel(std::unique_ptr<TodoStore> store, Options options, QObject* parent)
    : QObject(parent)
    , store_(std::move(store))
    , calendar_(std::move(options.calendar))
    , clock_(std::move(options.clock))
    , now_(clock_())
    , pending_(new DelaySlot(this))
    , preferences_(new Preferences(openSettings(options.settingsFile), this))
    , toast_(new UndoToast(
          [this](const UndoToast::Change& change) {
              withSpring(Spring::List, [&] {
                  markChange();
                  change();
              });
          },
          this))
    , completions_(new CompletionQueue(
          [this](const Uuid& id) {
              if (const std::optional<Todo> task = todoWithId(id)) {
                  toggle(*task);
              }
          },
          clock_, this))
    , launchAtLogin_(new LaunchAtLogin(std::move(options.launchAtLogin), this))
    , format_(new DisplayTexts(
          calendar_, [this] { return now_; }, this))
    , todayList_(new TaskListModel(this))
    , upcomingList_(new TaskListModel(this))
    , backlogList_(new TaskListModel(this)) {
    pending_->setObjectName(u"pending"_s);

    // The store calls back inside its own mutation, so views redraw with whatever spring the
    // model's operation marked the change with.
    store_->onChange([this] {
        markChange();
        Q_EMIT todosChanged();
        refreshDerived();
        refreshLists();
    });
    connect(completions_, &CompletionQueue::changed, this, &IslandModel::refreshLists);
    derived_ = derive();
    refreshLists();
}

IslandModel::~IslandModel() {
    store_->onChange({});
}

void IslandModel::setPlatform(Platform* platform) {
    platform_ = platform;
}

Platform& IslandModel::platform() {
    if (platform_) {
        return *platform_;
    }
    return nullPlatform_;
}

void IslandModel::setBucket(Bucket bucket) {
    assign(bucket_, bucket, &IslandModel::bucketChanged);
}

void IslandModel::setNotch(QSizeF notch) {
    assign(notch_, notch, &IslandModel::notchChanged);
}

void IslandModel::setOpenHeight(double height) {
    assign(openHeight_, height, &IslandModel::openHeightChanged);
}

void IslandModel::setDraft(const QString& draft) {
    assign(draft_, draft, &IslandModel::draftChanged);
}

void IslandModel::setEditing(std::optional<Uuid> id) {
    assign(editing_, id, &IslandModel::editingChanged);
}

void IslandModel::setScheduling(std::optional<Uuid> id) {
    assign(scheduling_, id, &IslandModel::schedulingChanged);
}

void IslandModel::setPage(Page page) {
    assign(page_, page, &IslandModel::pageChanged);
}

void IslandModel::setIsolated(bool isolated) {
    preferences_->setIsolated(isolated);
    assign(isolated_, isolated, &IslandModel::isolatedChanged);
}

void IslandModel::setGlassMaterial(bool offered) {
    assign(glassMaterial_, offered, &IslandModel::glassMaterialChanged);
}

void IslandModel::setNow(Timestamp now) {
    const DayFacts before = derived_.day;
    assign(now_, now, &IslandModel::nowChanged);
    // The lists show the day and the current minute, not the seconds of the reading.
    if (derived_.day != before) {
        refreshLists();
    }
}

// A request, not a state that is drawn: it leaves the spring of the last change alone.
void IslandModel::requestFocus() {
    ++focusRequest_;
    Q_EMIT focusRequestChanged();
}

void IslandModel::markChange() {
    if (spring_ == changeSpring_) {
        return;
    }
    spring_ = changeSpring_;
    Q_EMIT springChanged();
}

void IslandModel::withSpring(Spring spring, const std::function<void()>& change) {
    const Spring outer = std::exchange(changeSpring_, spring);
    change();
    changeSpring_ = outer;
}

IslandModel::DayFacts IslandModel::dayFacts() const {
    const DayKey today = Day::key(now_, calendar_);
    return {
        today,
        Day::adding(1, today),
        Day::weekendAfter(now_, calendar_),
        Day::next(2, now_, calendar_), // the coming Monday
        Format::date(now_, calendar_),
        static_cast<int>(Day::minuteOf(now_, calendar_)),
    };
}

IslandModel::Derived IslandModel::derive() const {
    Derived next;
    // Only the clock's reading changes the day's facts, and they cost a few formatter calls.
    const bool sameMinute = derived_.day.today == Day::key(now_, calendar_) &&
                            derived_.day.minute == Day::minuteOf(now_, calendar_);
    next.day = sameMinute ? derived_.day : dayFacts();
    next.isIdle = draft_.isEmpty() && !editing_ && !scheduling_;
    next.progress = kelo::progress(store_->todos(), now_, calendar_);
    next.islandSize =
        metrics::islandSize(mode_.kind(), notch_, next.progress.total > 0, openHeight_);
    next.plan = QuickParse::plan(stdText(draft_), bucket_, now_, calendar_);
    next.planText = qtText(Format::when(next.plan.day, next.plan.minute, now_, calendar_));
    if (const std::optional<Uuid> id = mode_.alertId()) {
        next.alertTodo = todoWithId(*id);
    }
    next.nextTimed = kelo::nextTimed(store_->todos(), now_, calendar_);
    return next;
}

// The derived values are computed from the state on every change; the last values are kept to
// tell their observers when a change of the state really changed them.
void IslandModel::refreshDerived() {
    const Derived previous = std::exchange(derived_, derive());
    if (previous.isIdle != derived_.isIdle) {
        Q_EMIT isIdleChanged();
    }
    if (previous.islandSize != derived_.islandSize) {
        Q_EMIT islandSizeChanged();
    }
    if (previous.plan != derived_.plan || previous.planText != derived_.planText) {
        Q_EMIT planChanged();
    }
    if (previous.alertTodo != derived_.alertTodo) {
        Q_EMIT alertTodoChanged();
    }
    if (previous.progress != derived_.progress) {
        Q_EMIT progressChanged();
    }
    if (previous.nextTimed != derived_.nextTimed) {
        Q_EMIT nextTimedChanged();
    }
    if (previous.day != derived_.day) {
        Q_EMIT dayChanged();
    }
}

void IslandModel::refreshLists() {
    const auto withChecks = [this](std::vector<TaskRow> rows) {
        for (TaskRow& row : rows) {
            row.checking = row.task && completions_->contains(row.task->id);
        }
        return rows;
    };
    const std::vector<Todo>& todos = store_->todos();
    todayList_->setRows(withChecks(todayRows(todos, now_, calendar_)));
    upcomingList_->setRows(withChecks(upcomingRows(todos, now_, calendar_)));
    backlogList_->setRows(withChecks(backlogRows(todos, now_, calendar_)));
}

std::optional<Todo> IslandModel::todoWithId(const Uuid& id) const {
    const Todo* found = store_->find(id);
    return found != nullptr ? std::optional<Todo>(*found) : std::nullopt;
}

} // namespace kelo
