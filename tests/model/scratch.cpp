#include "scratch.h"

#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace kelo::testing {

Calendar testCalendar() {
    return *Calendar::make("Europe/Berlin", "en_US");
}

Timestamp at(int year, int month, int day, int hour, int minute) {
    return testCalendar().at(CivilDay{year, month, day}, hour, minute);
}

Rig::Rig(Timestamp start)
    : time(start) {
    model = makeModel();
}

QString Rig::dataFile() const {
    return folder.filePath(u"todos.json"_s);
}

QString Rig::settingsFile() const {
    return folder.filePath(u"Kelo.conf"_s);
}

std::unique_ptr<IslandModel> Rig::makeModel() {
    auto store = std::make_unique<TodoStore>(
        dataFile().toStdString(), TodoStore::Options{time.clock(), [this](std::string_view line) {
                                                         logLines.emplace_back(line);
                                                     }});
    auto made = std::make_unique<IslandModel>(
        std::move(store), IslandModel::Options{testCalendar(), time.clock(), settingsFile()});
    made->setPlatform(&platform);
    time.watch(*made);
    return made;
}

DayKey Rig::today() const {
    return Day::key(time.now(), testCalendar());
}

Todo Rig::addTask(const std::string& title, std::optional<DayKey> day,
                  std::optional<std::int64_t> minute) {
    const std::optional<Todo> added = model->store().add(title, std::move(day), minute);
    if (!added) {
        QTest::qFail("the store refused a test task", __FILE__, __LINE__);
        return {};
    }
    return *added;
}

std::optional<Todo> Rig::task(const Uuid& id) const {
    const auto& todos = model->store().todos();
    const auto found =
        std::find_if(todos.begin(), todos.end(), [&](const Todo& todo) { return todo.id == id; });
    return found == todos.end() ? std::nullopt : std::optional(*found);
}

} // namespace kelo::testing
