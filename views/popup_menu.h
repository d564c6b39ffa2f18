#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>
#include <memory>

class QMenu;

namespace kelo::views {

// A context menu in a pop-up window of its own: not cut off by the island's window, navigable
// with the keyboard, closed by a click elsewhere. The entries are built by QML when the menu
// opens; each is an object with `text` and optionally `enabled`, `checkable`, `checked`,
// `separator` and `icon` with `iconTint` (a destructive entry carries a red icon).
class PopupMenu : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit PopupMenu(QObject* parent = nullptr);
    ~PopupMenu() override;

    // Opens at the pointer.
    Q_INVOKABLE void popup(const QVariantList& entries);

Q_SIGNALS:
    // The entry at `index` was chosen (separators count as entries).
    void triggered(int index);

private:
    std::unique_ptr<QMenu> menu_;
};

} // namespace kelo::views
