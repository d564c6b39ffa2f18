#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QPointer>
#include <QString>
#include <filesystem>

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

// The running Kelo on the session bus (interface org.kelo.Kelo1, described in
// org.kelo.Kelo1.xml): desktops bind a key to Toggle where Kelo cannot have Ctrl+Alt+T, and
// scripts add tasks to the island while it runs. Each Kelo takes the name of its data file (see
// kelo::bus::busName), so a scratch Kelo beside the user's own answers on a name of its own.
class IslandBus : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString DataFile READ dataFile CONSTANT FINAL)

public:
    IslandBus(IslandModel& model, const std::filesystem::path& dataFile, QObject* parent = nullptr);

    // Puts the object on the bus and takes the data file's name. A failure writes one log line,
    // "Kelo: could not take <name> on the session bus (<reason>).", and Kelo goes on without.
    void publish(const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] QString dataFile() const { return dataFile_; }

public Q_SLOTS:
    void Toggle();
    void OpenAdd();
    QString Add(const QString& line);

Q_SIGNALS:
    void TasksChanged();

private:
    QPointer<IslandModel> model_;
    QString dataFile_;
};

} // namespace kelo::shell
