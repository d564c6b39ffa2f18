#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace kelo {

class TodoStore;

// Notices within a moment when another program changes the data file while Kelo runs (a sync
// tool, an editor, a restore from a backup) and asks the store to read it again. The folder is
// watched for files replaced by rename, the file itself for edits in place; the store compares
// the file with what it last read or wrote, so Kelo's own saves cost one look and nothing more.
class DataFileWatcher : public QObject {
    Q_OBJECT

public:
    // The store must outlive the watcher.
    explicit DataFileWatcher(TodoStore& store, QObject* parent = nullptr);

private:
    void watch();
    void reload();

    TodoStore& store_;
    QFileSystemWatcher watcher_;
    // A replacement is often several steps (write, rename, remove); one look after the last.
    QTimer settle_;
};

} // namespace kelo
