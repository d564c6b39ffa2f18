#include "popup_menu.h"

#include "icons.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace kelo::views {

PopupMenu::PopupMenu(QObject* parent)
    : QObject(parent) {}

PopupMenu::~PopupMenu() = default;

void PopupMenu::popup(const QVariantList& entries) {
    menu_ = std::make_unique<QMenu>();
    for (qsizetype index = 0; index < entries.size(); ++index) {
        const QVariantMap entry = entries[index].toMap();
        if (entry.value(u"separator"_s).toBool()) {
            menu_->addSeparator();
            continue;
        }
        QAction* action = menu_->addAction(entry.value(u"text"_s).toString());
        action->setEnabled(entry.value(u"enabled"_s, true).toBool());
        action->setCheckable(entry.value(u"checkable"_s).toBool());
        action->setChecked(entry.value(u"checked"_s).toBool());
        const QString icon = entry.value(u"icon"_s).toString();
        if (!icon.isEmpty()) {
            const QColor tint = entry.value(u"iconTint"_s).value<QColor>();
            action->setIcon(QIcon(QPixmap::fromImage(Icons::image(icon, tint, 32))));
        }
        connect(action, &QAction::triggered, this,
                [this, index] { Q_EMIT triggered(static_cast<int>(index)); });
    }
    menu_->popup(QCursor::pos());
}

} // namespace kelo::views
