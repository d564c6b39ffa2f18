#include "data_file_watcher.h"

#include <QFileInfo>
#include <data_file_place.h>
#include <todo_store.h>

namespace kelo {

namespace {

constexpr std::chrono::milliseconds settleTime{150};

QString qtPath(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

} // namespace

DataFileWatcher::DataFileWatcher(TodoStore& store, QObject* parent)
    : QObject(parent)
    , store_(store) {
    settle_.setSingleShot(true);
    settle_.setInterval(settleTime);
    connect(&settle_, &QTimer::timeout, this, &DataFileWatcher::reload);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_,
            qOverload<>(&QTimer::start));
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, qOverload<>(&QTimer::start));
    watch();
}

void DataFileWatcher::watch() {
    // The link may have been pointed elsewhere, and a file replaced by rename is a new file to
    // watch: the paths are looked up again after every change.
    const std::filesystem::path target = resolvedDataFile(store_.path());
    // Before the first save the folder may not exist yet: its nearest existing parent tells when
    // it comes.
    std::filesystem::path existing = target.parent_path().empty() ? "." : target.parent_path();
    while (!std::filesystem::is_directory(existing) && existing.has_relative_path()) {
        existing = existing.parent_path();
    }
    const QString folder = qtPath(existing);
    const QString file = qtPath(target);
    if (!watcher_.directories().contains(folder)) {
        watcher_.addPath(folder);
    }
    if (!watcher_.files().contains(file) && QFileInfo::exists(file)) {
        watcher_.addPath(file);
    }
}

void DataFileWatcher::reload() {
    store_.reloadIfChanged();
    watch();
}

} // namespace kelo
