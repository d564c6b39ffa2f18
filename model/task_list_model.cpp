#include "task_list_model.h"

#include "qml_values.h"

#include <algorithm>
#include <unordered_set>

using namespace Qt::StringLiterals;

namespace kelo {

int TaskListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TaskListModel::taskCount() const {
    return static_cast<int>(std::ranges::count(rows_, RowKind::Task, &TaskRow::kind));
}

QVariant TaskListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const TaskRow& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    // Enumerations as plain numbers, which QML compares with its enumeration values.
    case KindRole:
        return static_cast<int>(row.kind);
    case KeyRole:
        return qtText(row.key);
    case TaskRole:
        return QVariant::fromValue(row.task ? taskValue(*row.task) : TaskValue{});
    case MetaRole:
        return static_cast<int>(row.meta);
    case TextRole:
        return qtText(row.text);
    case TintRole:
        return static_cast<int>(row.tint);
    case CheckingRole:
        return row.checking;
    default:
        return {};
    }
}

QHash<int, QByteArray> TaskListModel::roleNames() const {
    return {
        {KindRole, "kind"_ba},         {KeyRole, "key"_ba},   {TaskRole, "task"_ba},
        {MetaRole, "meta"_ba},         {TextRole, "text"_ba}, {TintRole, "tint"_ba},
        {CheckingRole, "checking"_ba},
    };
}

void TaskListModel::setRows(std::vector<TaskRow> rows) {
    const int countBefore = rowCount();
    const int tasksBefore = taskCount();
    removeRowsNotIn(rows);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        placeRow(at, std::move(rows[at]));
    }
    if (rowCount() != countBefore || taskCount() != tasksBefore) {
        Q_EMIT countChanged();
    }
}

void TaskListModel::removeRowsNotIn(const std::vector<TaskRow>& rows) {
    std::unordered_set<std::string> kept;
    for (const TaskRow& row : rows) {
        kept.insert(row.key);
    }
    // From the end, a run of leaving rows at a time.
    for (int last = rowCount() - 1; last >= 0;) {
        if (kept.contains(rows_[static_cast<std::size_t>(last)].key)) {
            --last;
            continue;
        }
        int first = last;
        while (first > 0 && !kept.contains(rows_[static_cast<std::size_t>(first - 1)].key)) {
            --first;
        }
        beginRemoveRows({}, first, last);
        rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
        endRemoveRows();
        last = first - 1;
    }
}

// Rows before `at` already are the new rows; the row for `at` is there already, further down
// (it moved up past rows that left their place), or new.
void TaskListModel::placeRow(std::size_t at, TaskRow row) {
    const auto position = static_cast<int>(at);
    const auto found = std::find_if(rows_.begin() + position, rows_.end(),
                                    [&](const TaskRow& held) { return held.key == row.key; });
    if (found == rows_.end()) {
        beginInsertRows({}, position, position);
        rows_.insert(rows_.begin() + position, std::move(row));
        endInsertRows();
        return;
    }
    const auto from = static_cast<int>(found - rows_.begin());
    if (from != position) {
        beginMoveRows({}, from, from, {}, position);
        std::rotate(rows_.begin() + position, rows_.begin() + from, rows_.begin() + from + 1);
        endMoveRows();
    }
    if (rows_[at] != row) {
        rows_[at] = std::move(row);
        const QModelIndex changed = index(position);
        Q_EMIT dataChanged(changed, changed);
    }
}

} // namespace kelo
