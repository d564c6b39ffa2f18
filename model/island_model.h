#pragma once

#include "completion_queue.h"
#include "delay_slot.h"
#include "display_texts.h"
#include "island_types.h"
#include "launch_at_login.h"
#include "null_platform.h"
#include "preferences.h"
#include "qml_values.h"
#include "spring.h"
#include "task_list_model.h"
#include "undo_toast.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QSizeF>
#include <QString>
#include <calendar.h>
#include <functional>
#include <memory>
#include <optional>
#include <quick_parse.h>
#include <todo_store.h>
#include <unordered_set>

namespace kelo {

// The application's one piece of shared state: the island's mode, the page and bucket shown
// when open, the add field's draft, editing, the clock's last reading and the lists. It owns the
// parts with a job of their own: the user's preferences, the toast and its undo, the completions
// under way, the login item and the display texts. Views, the panel, the hot key and the clock
// call its operations; views redraw from its properties, each of which notifies only when its
// value really changes.
//
// `spring` names the spring that the last change was marked with, so that views animate the
// redraw that follows with it.
class IslandModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(kelo::Mode mode READ mode NOTIFY modeChanged FINAL)
    Q_PROPERTY(
        kelo::island::BucketTab bucket READ bucketTab WRITE setBucketTab NOTIFY bucketChanged FINAL)
    Q_PROPERTY(QDateTime now READ nowDateTime NOTIFY nowChanged FINAL)
    Q_PROPERTY(QSizeF notch READ notch WRITE setNotch NOTIFY notchChanged FINAL)
    Q_PROPERTY(double openHeight READ openHeight WRITE setOpenHeight NOTIFY openHeightChanged FINAL)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged FINAL)
    // Task ids as upper-case text; empty when none.
    Q_PROPERTY(QString editing READ editingId WRITE setEditingId NOTIFY editingChanged FINAL)
    Q_PROPERTY(
        QString scheduling READ schedulingId WRITE setSchedulingId NOTIFY schedulingChanged FINAL)
    Q_PROPERTY(qint64 focusRequest READ focusRequest NOTIFY focusRequestChanged FINAL)
    Q_PROPERTY(kelo::island::Page page READ page WRITE setPage NOTIFY pageChanged FINAL)
    Q_PROPERTY(bool isolated READ isolated WRITE setIsolated NOTIFY isolatedChanged FINAL)
    // Whether the desktop offers the glass material: on Linux, whether a compositing manager
    // runs. The shell follows it; without it a glass theme draws as the standard island.
    Q_PROPERTY(bool glassMaterial READ glassMaterial WRITE setGlassMaterial NOTIFY
                   glassMaterialChanged FINAL)
    Q_PROPERTY(kelo::motion::Spring spring READ spring NOTIFY springChanged FINAL)

    Q_PROPERTY(kelo::Preferences* preferences READ preferences CONSTANT FINAL)
    Q_PROPERTY(kelo::UndoToast* toast READ toast CONSTANT FINAL)
    Q_PROPERTY(kelo::LaunchAtLogin* launchAtLogin READ launchAtLogin CONSTANT FINAL)
    Q_PROPERTY(kelo::DisplayTexts* format READ format CONSTANT FINAL)
    Q_PROPERTY(kelo::TaskListModel* todayList READ todayList CONSTANT FINAL)
    Q_PROPERTY(kelo::TaskListModel* upcomingList READ upcomingList CONSTANT FINAL)
    Q_PROPERTY(kelo::TaskListModel* backlogList READ backlogList CONSTANT FINAL)

    // Derived from the state above; each notifies only when its value changes.
    Q_PROPERTY(bool isIdle READ isIdle NOTIFY isIdleChanged FINAL)
    Q_PROPERTY(QSizeF islandSize READ islandSize NOTIFY islandSizeChanged FINAL)
    Q_PROPERTY(kelo::PlanValue plan READ planValue NOTIFY planChanged FINAL)
    // The plan's day and time as the add field's capsule shows them.
    Q_PROPERTY(QString planText READ planText NOTIFY planChanged FINAL)
    Q_PROPERTY(bool hasAlertTodo READ hasAlertTodo NOTIFY alertTodoChanged FINAL)
    Q_PROPERTY(kelo::TaskValue alertTodo READ alertTodoValue NOTIFY alertTodoChanged FINAL)
    Q_PROPERTY(kelo::ProgressValue progress READ progressValue NOTIFY progressChanged FINAL)
    // The first open timed task of today at the current minute or later.
    Q_PROPERTY(bool hasNextTimed READ hasNextTimed NOTIFY nextTimedChanged FINAL)
    Q_PROPERTY(kelo::TaskValue nextTimed READ nextTimedValue NOTIFY nextTimedChanged FINAL)
    // The current minute of the day, [0, 1439].
    Q_PROPERTY(int minuteOfDay READ minuteOfDay NOTIFY dayChanged FINAL)
    // The day keys the day chips and the task rows offer, and the header's date.
    Q_PROPERTY(QString todayKey READ todayKey NOTIFY dayChanged FINAL)
    Q_PROPERTY(QString tomorrowKey READ tomorrowKey NOTIFY dayChanged FINAL)
    Q_PROPERTY(QString weekendKey READ weekendKey NOTIFY dayChanged FINAL)
    Q_PROPERTY(QString nextWeekKey READ nextWeekKey NOTIFY dayChanged FINAL)
    Q_PROPERTY(QString headerDate READ headerDate NOTIFY dayChanged FINAL)

public:
    struct Options {
        Calendar calendar = Calendar::current();
        // The current system time: read for `now` by tick and as the completion time of tasks.
        std::function<Timestamp()> clock = currentTime;
        // An INI file for the preferences; none means the user's ~/.config/Kelo/Kelo.conf.
        std::optional<QString> settingsFile;
        LaunchAtLogin::Options launchAtLogin;
    };

    // Takes the store for good; reads the preferences once.
    explicit IslandModel(std::unique_ptr<TodoStore> store, QObject* parent = nullptr);
    IslandModel(std::unique_ptr<TodoStore> store, Options options, QObject* parent = nullptr);
    ~IslandModel() override;

    [[nodiscard]] TodoStore& store() const { return *store_; }
    [[nodiscard]] const Calendar& calendar() const { return calendar_; }

    // The desktop the model acts on; it is not owned and may go away, after which the model
    // acts on a platform that does nothing.
    void setPlatform(Platform* platform);
    [[nodiscard]] Platform& platform();

    [[nodiscard]] Preferences* preferences() const { return preferences_; }
    [[nodiscard]] UndoToast* toast() const { return toast_; }
    [[nodiscard]] LaunchAtLogin* launchAtLogin() const { return launchAtLogin_; }
    [[nodiscard]] DisplayTexts* format() const { return format_; }
    [[nodiscard]] TaskListModel* todayList() const { return todayList_; }
    [[nodiscard]] TaskListModel* upcomingList() const { return upcomingList_; }
    [[nodiscard]] TaskListModel* backlogList() const { return backlogList_; }

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] Bucket bucket() const { return bucket_; }
    void setBucket(Bucket bucket);
    [[nodiscard]] Timestamp now() const { return now_; }
    [[nodiscard]] QSizeF notch() const { return notch_; }
    void setNotch(QSizeF notch);
    [[nodiscard]] double openHeight() const { return openHeight_; }
    void setOpenHeight(double height);
    [[nodiscard]] QString draft() const { return draft_; }
    void setDraft(const QString& draft);
    [[nodiscard]] std::optional<Uuid> editing() const { return editing_; }
    void setEditing(std::optional<Uuid> id);
    [[nodiscard]] std::optional<Uuid> scheduling() const { return scheduling_; }
    void setScheduling(std::optional<Uuid> id);
    [[nodiscard]] qint64 focusRequest() const { return focusRequest_; }
    [[nodiscard]] Page page() const { return page_; }
    void setPage(Page page);
    [[nodiscard]] bool isolated() const { return isolated_; }
    void setIsolated(bool isolated);
    [[nodiscard]] bool glassMaterial() const { return glassMaterial_; }
    void setGlassMaterial(bool offered);
    [[nodiscard]] bool hovering() const { return hovering_; }
    [[nodiscard]] const std::unordered_set<Uuid>& alerted() const { return alerted_; }
    [[nodiscard]] Spring spring() const { return spring_; }

    // Derived.
    [[nodiscard]] bool isIdle() const { return derived_.isIdle; }
    [[nodiscard]] QSizeF islandSize() const { return derived_.islandSize; }
    [[nodiscard]] const Parsed& plan() const { return derived_.plan; }
    [[nodiscard]] const std::optional<Todo>& alertTodo() const { return derived_.alertTodo; }
    [[nodiscard]] const DayProgress& progress() const { return derived_.progress; }
    [[nodiscard]] const std::optional<Todo>& nextTimed() const { return derived_.nextTimed; }
    [[nodiscard]] DayKey today() const { return derived_.day.today; }

    // Navigation.
    void setMode(const Mode& mode);
    // The pointer entered (true) or left the island. The shell does not report hovering while
    // the model is isolated, nor the panel's loss of key status.
    Q_INVOKABLE void hover(bool inside);
    Q_INVOKABLE void open(bool activate);
    Q_INVOKABLE void hotKey();
    Q_INVOKABLE void escape();
    Q_INVOKABLE void endEditing();
    Q_INVOKABLE void toggleSettings();
    // A task row's Schedule button: opens that task's schedule editor, or closes it.
    Q_INVOKABLE void toggleScheduling(const QString& id);
    // A bucket tab's choice, which the lists animate with the list spring.
    Q_INVOKABLE void selectBucket(kelo::island::BucketTab tab);

    // Task actions. Tasks are passed as the caller last saw them.
    Q_INVOKABLE void addDraft();
    // Adds a task from a quick-add line as the add field would in the Today tab, without
    // touching the draft or the tab shown: for requests from outside the island.
    Q_INVOKABLE void addLine(const QString& line);
    void pickDay(const std::optional<DayKey>& day);
    void pickTime(std::optional<std::int64_t> minute);
    void rename(const Todo& task, const QString& text);
    void move(const Todo& task, const std::optional<DayKey>& day,
              std::optional<std::int64_t> minute);
    bool reschedule(const Todo& task, const QString& phrase);
    void toggle(const Todo& task);
    void deleteTodo(const Todo& task);
    // Ticks a task off as its row's circle does: drawn done at once, completed a moment later;
    // a done task reopens at once.
    void check(const Todo& task);
    // The toast's Undo.
    Q_INVOKABLE void undoLast();

    // The same operations for QML, which names tasks by their id text and passes an absent day
    // or minute as null. An unknown id changes nothing.
    Q_INVOKABLE void pickDay(const QVariant& day);
    Q_INVOKABLE void pickTime(const QVariant& minute);
    Q_INVOKABLE void rename(const QString& id, const QString& text);
    Q_INVOKABLE void move(const QString& id, const QVariant& day, const QVariant& minute);
    Q_INVOKABLE bool reschedule(const QString& id, const QString& phrase);
    Q_INVOKABLE void toggle(const QString& id);
    Q_INVOKABLE void deleteTask(const QString& id);
    Q_INVOKABLE void check(const QString& id);
    Q_INVOKABLE void snooze(const QString& id);

    // Clock and alerts.
    Q_INVOKABLE void tick();
    void snooze(const Todo& task);
    // The alert's Done: completes the alerted task in the store (no toast, no undo; the id stays
    // alerted) and closes the island.
    Q_INVOKABLE void completeAlert();

    // The island menu's and the settings page's requests to the desktop.
    // Shows the default data file in the file manager, whichever file this run uses.
    Q_INVOKABLE void showDataFile();
    Q_INVOKABLE void quit();

    // QML faces of the properties above.
    [[nodiscard]] island::BucketTab bucketTab() const;
    void setBucketTab(island::BucketTab tab);
    [[nodiscard]] QDateTime nowDateTime() const;
    [[nodiscard]] QString editingId() const;
    void setEditingId(const QString& id);
    [[nodiscard]] QString schedulingId() const;
    void setSchedulingId(const QString& id);
    [[nodiscard]] PlanValue planValue() const;
    [[nodiscard]] QString planText() const { return derived_.planText; }
    [[nodiscard]] bool hasAlertTodo() const { return derived_.alertTodo.has_value(); }
    [[nodiscard]] TaskValue alertTodoValue() const;
    [[nodiscard]] ProgressValue progressValue() const;
    [[nodiscard]] bool hasNextTimed() const { return derived_.nextTimed.has_value(); }
    [[nodiscard]] TaskValue nextTimedValue() const;
    [[nodiscard]] int minuteOfDay() const { return derived_.day.minute; }
    [[nodiscard]] QString todayKey() const;
    [[nodiscard]] QString tomorrowKey() const;
    [[nodiscard]] QString weekendKey() const;
    [[nodiscard]] QString nextWeekKey() const;
    [[nodiscard]] QString headerDate() const;

Q_SIGNALS:
    void modeChanged();
    void bucketChanged();
    void nowChanged();
    void notchChanged();
    void openHeightChanged();
    void draftChanged();
    void editingChanged();
    void schedulingChanged();
    void focusRequestChanged();
    void pageChanged();
    void isolatedChanged();
    void glassMaterialChanged();
    void springChanged();
    void isIdleChanged();
    void islandSizeChanged();
    void planChanged();
    void alertTodoChanged();
    void progressChanged();
    void nextTimedChanged();
    void dayChanged();
    // The store's task list changed.
    void todosChanged();

private:
    // What follows from the clock's reading alone.
    struct DayFacts {
        DayKey today;
        DayKey tomorrow;
        DayKey weekend;
        DayKey nextWeek;
        std::string headerDate;
        int minute = 0;

        bool operator==(const DayFacts&) const = default;
    };
    struct Derived {
        bool isIdle = true;
        QSizeF islandSize;
        Parsed plan;
        QString planText;
        std::optional<Todo> alertTodo;
        DayProgress progress;
        std::optional<Todo> nextTimed;
        DayFacts day;
    };

    // Stores a new value, notifies its observers, then those of the values derived from it.
    template <typename T> void assign(T& field, const T& value, void (IslandModel::*signal)()) {
        if (field == value) {
            return;
        }
        field = value;
        markChange();
        Q_EMIT(this->*signal)();
        refreshDerived();
    }
    void withSpring(Spring spring, const std::function<void()>& change);
    // Marks a change about to be emitted with the spring it belongs to.
    void markChange();
    void refreshDerived();
    [[nodiscard]] Derived derive() const;
    [[nodiscard]] DayFacts dayFacts() const;
    void refreshLists();
    void requestFocus();
    void setNow(Timestamp now);
    void giveBackKeyboard();
    void after(std::chrono::milliseconds delay, std::function<void()> work);

    [[nodiscard]] Bucket targetBucket(const std::optional<DayKey>& day) const;
    [[nodiscard]] std::optional<Todo> todoWithId(const Uuid& id) const;
    [[nodiscard]] std::optional<Todo> todoWithId(const QString& id) const;
    void rewriteDraft(const std::string& title, const std::optional<DayKey>& day,
                      std::optional<std::int64_t> minute);
    void showToast(const QString& text, std::optional<std::function<void()>> undo);

    std::unique_ptr<TodoStore> store_;
    Calendar calendar_;
    std::function<Timestamp()> clock_;
    NullPlatform nullPlatform_;
    QPointer<Platform> platform_;

    Mode mode_;
    Bucket bucket_ = Bucket::today;
    Timestamp now_;
    QSizeF notch_{185, 32};
    double openHeight_ = 120;
    QString draft_;
    std::optional<Uuid> editing_;
    std::optional<Uuid> scheduling_;
    qint64 focusRequest_ = 0;
    Page page_ = Page::Tasks;
    bool isolated_ = false;
    bool glassMaterial_ = false;
    bool hovering_ = false;
    DelaySlot* pending_;
    std::unordered_set<Uuid> alerted_;
    // The application that had the keyboard when the hot key opened the island.
    std::optional<ApplicationRef> previousApp_;

    // The spring of the change under way, and of the last change.
    Spring changeSpring_ = Spring::None;
    Spring spring_ = Spring::None;
    Derived derived_;

    Preferences* preferences_;
    UndoToast* toast_;
    CompletionQueue* completions_;
    LaunchAtLogin* launchAtLogin_;
    DisplayTexts* format_;
    TaskListModel* todayList_;
    TaskListModel* upcomingList_;
    TaskListModel* backlogList_;
};

} // namespace kelo
