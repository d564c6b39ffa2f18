#pragma once

#include "task_rows.h"

#include <QAbstractListModel>
#include <vector>

namespace kelo {

// One list of the open island for a QML view. New rows are applied in place: rows that left are
// removed, rows that came are inserted, rows that moved are moved and rows whose content changed
// report it, so a view keeps each row's delegate (and its hover, its rename field) for as long as
// the row's key stays in the list.
class TaskListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged FINAL)
    // Rows that are tasks, headings and the now line left out.
    Q_PROPERTY(int taskCount READ taskCount NOTIFY countChanged FINAL)

public:
    enum Role {
        KindRole = Qt::UserRole + 1,
        KeyRole,
        TaskRole, // a TaskValue
        MetaRole,
        TextRole,
        TintRole,
        CheckingRole,
    };
    Q_ENUM(Role)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] const std::vector<TaskRow>& rows() const { return rows_; }
    [[nodiscard]] int taskCount() const;

    void setRows(std::vector<TaskRow> rows);

Q_SIGNALS:
    void countChanged();

private:
    void removeRowsNotIn(const std::vector<TaskRow>& rows);
    void placeRow(std::size_t at, TaskRow row);

    std::vector<TaskRow> rows_;
};

} // namespace kelo
