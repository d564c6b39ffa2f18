#include "island_model.h"

#include "island_metrics.h"
#include "preferences.h"
#include "qml_values.h"

#include <QSettings>
#include <algorithm>
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
    , settings_(openSettings(options.settingsFile))
    , now_(clock_())
    , pending_(new DelaySlot(this))
    , toastWork_(new DelaySlot(this)) {
    pending_->setObjectName(u"pending"_s);
    toastWork_->setObjectName(u"toastWork"_s);

    const Preferences preferences = readPreferences(*settings_);
    theme_ = preferences.theme;
    glassLook_ = preferences.glassLook;
    reminderSound_ = preferences.reminderSound;

    // The store calls back inside its own mutation, so views redraw with whatever spring the
    // model's operation marked the change with.
    store_->onChange([this] {
        Q_EMIT todosChanged();
        refreshDerived();
    });
    derived_ = derived();
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

template <typename T>
void IslandModel::assign(T& field, const T& value, void (IslandModel::*signal)()) {
    if (field == value) {
        return;
    }
    field = value;
    Q_EMIT(this->*signal)();
    refreshDerived();
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

// The three preferences are written on every assignment, even of the value held, so that the
// stored copy always matches what the user last chose.
void IslandModel::setTheme(IslandTheme theme) {
    assign(theme_, theme, &IslandModel::themeChanged);
    if (!isolated_) {
        writeTheme(*settings_, theme);
    }
}

void IslandModel::setGlassLook(GlassLook look) {
    assign(glassLook_, look, &IslandModel::glassLookChanged);
    if (!isolated_) {
        writeGlassLook(*settings_, look);
    }
}

void IslandModel::setReminderSound(bool on) {
    assign(reminderSound_, on, &IslandModel::reminderSoundChanged);
    if (!isolated_) {
        writeReminderSound(*settings_, on);
    }
}

void IslandModel::setIsolated(bool isolated) {
    assign(isolated_, isolated, &IslandModel::isolatedChanged);
}

void IslandModel::setGlassMaterial(bool offered) {
    assign(glassMaterial_, offered, &IslandModel::glassMaterialChanged);
}

void IslandModel::setNow(Timestamp now) {
    assign(now_, now, &IslandModel::nowChanged);
}

void IslandModel::setToast(std::optional<Toast> toast) {
    assign(toast_, toast, &IslandModel::toastChanged);
}

void IslandModel::requestFocus() {
    ++focusRequest_;
    Q_EMIT focusRequestChanged();
}

void IslandModel::setSpring(Spring spring) {
    if (spring_ == spring) {
        return;
    }
    spring_ = spring;
    Q_EMIT springChanged();
}

void IslandModel::withSpring(Spring spring, const std::function<void()>& change) {
    const Spring outer = spring_;
    setSpring(spring);
    change();
    setSpring(outer);
}

bool IslandModel::isIdle() const {
    return draft_.isEmpty() && !editing_ && !scheduling_;
}

QSizeF IslandModel::islandSize() const {
    const bool planned =
        mode_.kind() == ModeKind::Closed && progress(store_->todos(), now_, calendar_).total > 0;
    return metrics::islandSize(mode_.kind(), notch_, planned, openHeight_);
}

Parsed IslandModel::plan() const {
    return QuickParse::plan(stdText(draft_), bucket_, now_, calendar_);
}

std::optional<Todo> IslandModel::alertTodo() const {
    const std::optional<Uuid> id = mode_.alertId();
    return id ? todoWithId(*id) : std::nullopt;
}

IslandModel::Derived IslandModel::derived() const {
    return {isIdle(), islandSize(), plan(), alertTodo()};
}

// The derived values have no storage of their own; the last values read are kept only to tell
// their observers when an input change really changed them.
void IslandModel::refreshDerived() {
    const Derived previous = std::exchange(derived_, derived());
    if (previous.isIdle != derived_.isIdle) {
        Q_EMIT isIdleChanged();
    }
    if (previous.islandSize != derived_.islandSize) {
        Q_EMIT islandSizeChanged();
    }
    if (previous.plan != derived_.plan) {
        Q_EMIT planChanged();
    }
    if (previous.alertTodo != derived_.alertTodo) {
        Q_EMIT alertTodoChanged();
    }
}

DayKey IslandModel::today() const {
    return Day::key(now_, calendar_);
}

std::optional<Todo> IslandModel::todoWithId(const Uuid& id) const {
    const Todo* found = store_->find(id);
    return found != nullptr ? std::optional<Todo>(*found) : std::nullopt;
}

} // namespace kelo
