#pragma once

#include "delay_slot.h"
#include "island_types.h"
#include "null_platform.h"
#include "spring.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QSizeF>
#include <QString>
#include <QVariant>
#include <calendar.h>
#include <functional>
#include <memory>
#include <optional>
#include <quick_parse.h>
#include <todo_store.h>
#include <unordered_set>

class QSettings;

namespace kelo {

// The application's one piece of shared state: the island's mode, the page and bucket shown
// when open, the add field's draft, editing, the toast, the clock's last reading and the user's
// preferences. Views, the panel, the hot key and the clock call its operations; views redraw
// from its properties, each of which notifies only when its value really changes.
//
// Every change that the views animate is marked while its signals are emitted: `spring` then
// names the spring to animate the redraw with, and is None outside such a change.
class IslandModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(kelo::Mode mode READ mode NOTIFY modeChanged FINAL)
    Q_PROPERTY(
        kelo::island::BucketTab bucket READ bucketTab WRITE setBucketTab NOTIFY bucketChanged FINAL)
    Q_PROPERTY(QDateTime now READ nowDateTime NOTIFY nowChanged FINAL)
    Q_PROPERTY(QSizeF notch READ notch WRITE setNotch NOTIFY notchChanged FINAL)
    Q_PROPERTY(double openHeight READ openHeight WRITE setOpenHeight NOTIFY openHeightChanged FINAL)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged FINAL)
    // Task ids as upper-case text; null when none.
    Q_PROPERTY(QVariant editing READ editingValue WRITE setEditingValue NOTIFY editingChanged FINAL)
    Q_PROPERTY(QVariant scheduling READ schedulingValue WRITE setSchedulingValue NOTIFY
                   schedulingChanged FINAL)
    // A kelo::Toast, or null.
    Q_PROPERTY(QVariant toast READ toastValue NOTIFY toastChanged FINAL)
    Q_PROPERTY(qint64 focusRequest READ focusRequest NOTIFY focusRequestChanged FINAL)
    Q_PROPERTY(kelo::island::Page page READ page WRITE setPage NOTIFY pageChanged FINAL)
    Q_PROPERTY(kelo::island::IslandTheme theme READ theme WRITE setTheme NOTIFY themeChanged FINAL)
    Q_PROPERTY(kelo::island::GlassLook glassLook READ glassLook WRITE setGlassLook NOTIFY
                   glassLookChanged FINAL)
    Q_PROPERTY(bool reminderSound READ reminderSound WRITE setReminderSound NOTIFY
                   reminderSoundChanged FINAL)
    Q_PROPERTY(bool isolated READ isolated WRITE setIsolated NOTIFY isolatedChanged FINAL)
    // Whether the desktop offers the glass material: on Linux, whether a compositing manager
    // runs. The shell follows it; without it a glass theme draws as the standard island.
    Q_PROPERTY(bool glassMaterial READ glassMaterial WRITE setGlassMaterial NOTIFY
                   glassMaterialChanged FINAL)
    Q_PROPERTY(bool isIdle READ isIdle NOTIFY isIdleChanged FINAL)
    Q_PROPERTY(QSizeF islandSize READ islandSize NOTIFY islandSizeChanged FINAL)
    // {title, day, minute}; day and minute are null when absent.
    Q_PROPERTY(QVariantMap plan READ planValue NOTIFY planChanged FINAL)
    // {id, title, day, minute, done}, or null.
    Q_PROPERTY(QVariant alertTodo READ alertTodoValue NOTIFY alertTodoChanged FINAL)
    Q_PROPERTY(kelo::motion::Spring spring READ spring NOTIFY springChanged FINAL)

public:
    struct Options {
        Calendar calendar = Calendar::current();
        // The current system time: read for `now` by tick and as the completion time of tasks.
        std::function<Timestamp()> clock = currentTime;
        // An INI file for the preferences; none means the user's ~/.config/Kelo/Kelo.conf.
        std::optional<QString> settingsFile;
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
    [[nodiscard]] std::optional<Toast> toast() const { return toast_; }
    [[nodiscard]] qint64 focusRequest() const { return focusRequest_; }
    [[nodiscard]] Page page() const { return page_; }
    void setPage(Page page);
    [[nodiscard]] IslandTheme theme() const { return theme_; }
    void setTheme(IslandTheme theme);
    [[nodiscard]] GlassLook glassLook() const { return glassLook_; }
    void setGlassLook(GlassLook look);
    [[nodiscard]] bool reminderSound() const { return reminderSound_; }
    void setReminderSound(bool on);
    [[nodiscard]] bool isolated() const { return isolated_; }
    void setIsolated(bool isolated);
    [[nodiscard]] bool glassMaterial() const { return glassMaterial_; }
    void setGlassMaterial(bool offered);
    [[nodiscard]] bool hovering() const { return hovering_; }
    [[nodiscard]] const std::unordered_set<Uuid>& alerted() const { return alerted_; }
    [[nodiscard]] Spring spring() const { return spring_; }

    // Derived, computed on every read.
    [[nodiscard]] bool isIdle() const;
    [[nodiscard]] QSizeF islandSize() const;
    [[nodiscard]] Parsed plan() const;
    [[nodiscard]] std::optional<Todo> alertTodo() const;

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
    Q_INVOKABLE void undoLast();

    // Clock and alerts.
    Q_INVOKABLE void tick();
    void snooze(const Todo& task);
    // The alert's Done: completes the alerted task in the store (no toast, no undo; the id stays
    // alerted) and closes the island.
    Q_INVOKABLE void completeAlert();

    // The same operations for QML, which names tasks by their id text and passes absent values
    // as null. An unknown id changes nothing.
    Q_INVOKABLE void chooseDay(const QVariant& day);
    Q_INVOKABLE void chooseTime(const QVariant& minute);
    Q_INVOKABLE void renameTask(const QString& id, const QString& text);
    Q_INVOKABLE bool rescheduleTask(const QString& id, const QString& phrase);
    Q_INVOKABLE void toggleTask(const QString& id);
    Q_INVOKABLE void deleteTask(const QString& id);
    Q_INVOKABLE void snoozeTask(const QString& id);

    // QML faces of the properties above.
    [[nodiscard]] island::BucketTab bucketTab() const;
    void setBucketTab(island::BucketTab tab);
    [[nodiscard]] QDateTime nowDateTime() const;
    [[nodiscard]] QVariant editingValue() const;
    void setEditingValue(const QVariant& id);
    [[nodiscard]] QVariant schedulingValue() const;
    void setSchedulingValue(const QVariant& id);
    [[nodiscard]] QVariant toastValue() const;
    [[nodiscard]] QVariantMap planValue() const;
    [[nodiscard]] QVariant alertTodoValue() const;

Q_SIGNALS:
    void modeChanged();
    void bucketChanged();
    void nowChanged();
    void notchChanged();
    void openHeightChanged();
    void draftChanged();
    void editingChanged();
    void schedulingChanged();
    void toastChanged();
    void focusRequestChanged();
    void pageChanged();
    void themeChanged();
    void glassLookChanged();
    void reminderSoundChanged();
    void isolatedChanged();
    void glassMaterialChanged();
    void isIdleChanged();
    void islandSizeChanged();
    void planChanged();
    void alertTodoChanged();
    void springChanged();
    // The store's task list changed.
    void todosChanged();

private:
    struct Derived {
        bool isIdle = true;
        QSizeF islandSize;
        Parsed plan;
        std::optional<Todo> alertTodo;
    };

    template <typename T> void assign(T& field, const T& value, void (IslandModel::*signal)());
    void withSpring(Spring spring, const std::function<void()>& change);
    void setSpring(Spring spring);
    void refreshDerived();
    [[nodiscard]] Derived derived() const;
    void requestFocus();
    void setNow(Timestamp now);
    void setToast(std::optional<Toast> toast);
    void giveBackKeyboard();
    void after(std::chrono::milliseconds delay, std::function<void()> work);

    [[nodiscard]] DayKey today() const;
    [[nodiscard]] Bucket targetBucket(const std::optional<DayKey>& day) const;
    [[nodiscard]] std::optional<Todo> todoWithId(const Uuid& id) const;
    [[nodiscard]] std::optional<Todo> todoWithId(const QString& id) const;
    void rewriteDraft(const std::string& title, const std::optional<DayKey>& day,
                      std::optional<std::int64_t> minute);
    void showToast(const QString& text, std::function<void()> undo);
    void dismissToast();

    std::unique_ptr<TodoStore> store_;
    Calendar calendar_;
    std::function<Timestamp()> clock_;
    std::unique_ptr<QSettings> settings_;
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
    std::optional<Toast> toast_;
    qint64 focusRequest_ = 0;
    Page page_ = Page::Tasks;
    IslandTheme theme_ = IslandTheme::Standard;
    GlassLook glassLook_ = GlassLook::System;
    bool reminderSound_ = true;
    bool isolated_ = false;
    bool glassMaterial_ = false;
    bool hovering_ = false;
    DelaySlot* pending_;
    DelaySlot* toastWork_;
    std::optional<std::function<void()>> undoAction_;
    std::unordered_set<Uuid> alerted_;
    // The application that had the keyboard when the hot key opened the island.
    std::optional<ApplicationRef> previousApp_;

    Spring spring_ = Spring::None;
    Derived derived_;
};

} // namespace kelo
