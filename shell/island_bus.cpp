#include "island_bus.h"

#include "island_model.h"
#include "kelo1adaptor.h"
#include "running_kelo.h"
#include "system_log.h"

namespace kelo::shell {

IslandBus::IslandBus(IslandModel& model, const std::filesystem::path& dataFile, QObject* parent)
    : QObject(parent)
    , model_(&model)
    , dataFile_(QString::fromStdString(dataFile.string())) {
    new Kelo1Adaptor(this);
    connect(&model, &IslandModel::todosChanged, this, &IslandBus::TasksChanged);
}

void IslandBus::publish(const QDBusConnection& bus) {
    const std::string name = bus::busName(dataFile_.toStdString());
    QDBusConnection connection(bus);
    const bool published = connection.isConnected() &&
                           connection.registerObject(QString::fromLatin1(bus::objectPath), this) &&
                           connection.registerService(QString::fromStdString(name));
    if (!published) {
        const QString reason = connection.lastError().isValid() ? connection.lastError().message()
                                                                : QStringLiteral("no session bus");
        systemLog("Kelo: could not take " + name + " on the session bus (" + reason.toStdString() +
                  ").");
    }
}

void IslandBus::Toggle() {
    if (model_) {
        model_->hotKey();
    }
}

void IslandBus::OpenAdd() {
    if (model_) {
        model_->open(true);
    }
}

// The store appends every new task, so a task added here is the last one.
QString IslandBus::Add(const QString& line) {
    if (!model_) {
        return {};
    }
    const auto before = model_->store().todos().size();
    model_->addLine(line);
    const auto& todos = model_->store().todos();
    return todos.size() > before ? QString::fromStdString(todos.back().id.text()) : QString();
}

} // namespace kelo::shell
