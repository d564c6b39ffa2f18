#include "undo_toast.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace kelo {

UndoToast::UndoToast(std::function<void(const Change&)> animate, QObject* parent)
    : QObject(parent)
    , animate_(std::move(animate))
    , lifetime_(new DelaySlot(this)) {
    lifetime_->setObjectName(u"toastWork"_s);
}

void UndoToast::show(const QString& text, std::optional<Change> undo) {
    undo_ = std::move(undo);
    setToast(Toast{Uuid::random(), text, undo_.has_value()});
    lifetime_->schedule(lifetime, [this] { dismiss(); });
}

void UndoToast::dismiss() {
    undo_.reset();
    setToast(std::nullopt);
}

void UndoToast::undo() {
    if (auto action = std::exchange(undo_, std::nullopt)) {
        animate_(*action);
    }
    dismiss();
}

void UndoToast::setToast(std::optional<Toast> toast) {
    if (toast_ == toast) {
        return;
    }
    animate_([&] {
        toast_ = std::move(toast);
        Q_EMIT toastChanged();
    });
}

} // namespace kelo
