#pragma once

#include "delay_slot.h"
#include "island_types.h"

#include <QObject>
#include <chrono>
#include <functional>
#include <optional>

namespace kelo {

// The one toast of the open island and what undoes the action it reports. A toast lives 4 s
// unless a new one replaces it (with its own undo) or it is undone; undo runs at most once.
class UndoToast : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool shown READ shown NOTIFY toastChanged FINAL)
    // The toast on screen; meaningful while `shown`.
    Q_PROPERTY(kelo::Toast toast READ toastValue NOTIFY toastChanged FINAL)

public:
    static constexpr std::chrono::milliseconds lifetime{4000};

    using Change = std::function<void()>;
    // `animate` runs each change of the toast, and the undo, so that the views draw them with
    // the list spring.
    UndoToast(std::function<void(const Change&)> animate, QObject* parent);

    [[nodiscard]] const std::optional<Toast>& current() const { return toast_; }
    [[nodiscard]] bool shown() const { return toast_.has_value(); }
    [[nodiscard]] Toast toastValue() const { return toast_.value_or(Toast{}); }

    // Without an undo the toast offers none.
    void show(const QString& text, std::optional<Change> undo);
    void dismiss();
    // The toast's Undo. The scheduled dismissal stays; when it fires it finds nothing to hide.
    Q_INVOKABLE void undo();

Q_SIGNALS:
    void toastChanged();

private:
    void setToast(std::optional<Toast> toast);

    std::function<void(const Change&)> animate_;
    DelaySlot* lifetime_;
    std::optional<Toast> toast_;
    std::optional<Change> undo_;
};

} // namespace kelo
