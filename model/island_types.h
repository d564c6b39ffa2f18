#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <todo.h>
#include <uuid.h>

// These types carry only QtCore meta-data. The views' QML module registers them with
// QML_FOREIGN_NAMESPACE (the enumerations) and QML_FOREIGN with QML_VALUE_TYPE (Mode, Toast),
// since the model links no QML module.
namespace kelo::island {
Q_NAMESPACE

// Enumerators start with a capital letter because QML reaches enumeration values only through
// capitalised names; the cases are otherwise the island's own words.

enum class ModeKind { Alert, Closed, Peek, Open };
Q_ENUM_NS(ModeKind)

enum class Page { Tasks, Settings };
Q_ENUM_NS(Page)

// The preference's raw values are "standard" and "glass".
enum class IslandTheme { Standard, Glass };
Q_ENUM_NS(IslandTheme)

// The preference's raw values are "system", "light" and "dark".
enum class GlassLook { System, Light, Dark };
Q_ENUM_NS(GlassLook)

// The core's Bucket as QML sees it; the values are the core's raw values, so a cast converts.
enum class BucketTab {
    Today = static_cast<int>(Bucket::today),
    Upcoming = static_cast<int>(Bucket::upcoming),
    Backlog = static_cast<int>(Bucket::backlog),
};
Q_ENUM_NS(BucketTab)

// What one row of a task list is.
enum class RowKind { Task, Section, NowLine };
Q_ENUM_NS(RowKind)

// What a task row shows at its right edge: nothing, the time, or the day (an overdue task's).
enum class Meta { None, Time, Day };
Q_ENUM_NS(Meta)

// Section headings are quiet, except the one over overdue tasks.
enum class SectionTint { Quiet, Overdue };
Q_ENUM_NS(SectionTint)

} // namespace kelo::island

namespace kelo {

using island::GlassLook;
using island::IslandTheme;
using island::Meta;
using island::ModeKind;
using island::Page;
using island::RowKind;
using island::SectionTint;

// What the island shows. Only an alert carries a task id, so the id cannot exist without it.
class Mode {
    Q_GADGET
    Q_PROPERTY(kelo::island::ModeKind kind READ kind CONSTANT FINAL)
    // The alerted task's upper-case id; empty outside an alert.
    Q_PROPERTY(QString alertId READ alertIdText CONSTANT FINAL)

public:
    Mode() = default;

    [[nodiscard]] static Mode alert(const Uuid& id) { return Mode(ModeKind::Alert, id); }
    [[nodiscard]] static Mode closed() { return Mode(ModeKind::Closed, std::nullopt); }
    [[nodiscard]] static Mode peek() { return Mode(ModeKind::Peek, std::nullopt); }
    [[nodiscard]] static Mode open() { return Mode(ModeKind::Open, std::nullopt); }

    [[nodiscard]] ModeKind kind() const { return kind_; }
    [[nodiscard]] std::optional<Uuid> alertId() const { return alertId_; }
    [[nodiscard]] QString alertIdText() const;

    bool operator==(const Mode&) const = default;

private:
    Mode(ModeKind kind, std::optional<Uuid> alertId)
        : kind_(kind)
        , alertId_(alertId) {}

    ModeKind kind_ = ModeKind::Closed;
    std::optional<Uuid> alertId_;
};

// The one-line notice with an Undo. A fresh id for every toast makes a replacing toast a
// different toast even when its text is the same. A toast whose action changed nothing has
// nothing to undo and offers no Undo.
struct Toast {
    Q_GADGET
    Q_PROPERTY(QString id READ idText CONSTANT FINAL)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(bool undoable MEMBER undoable FINAL)

public:
    Uuid id;
    QString text;
    bool undoable = false;

    [[nodiscard]] QString idText() const;

    bool operator==(const Toast&) const = default;
};

} // namespace kelo
