#include "snapshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>
#include <chrono>
#include <functional>
#include <island_model.h>
#include <lists.h>
#include <vector>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace kelo::Harness {

namespace {

constexpr auto settleTime = 1200ms;

struct State {
    QString name;
    std::function<void(IslandModel&)> setUp;
};

std::vector<State> states() {
    const auto look = [](IslandModel& model, IslandTheme theme, GlassLook glassLook) {
        model.preferences()->setTheme(theme);
        model.preferences()->setGlassLook(glassLook);
    };
    return {
        {u"1-closed"_s, [](IslandModel& model) { model.setMode(Mode::closed()); }},
        {u"2-peek"_s, [](IslandModel& model) { model.setMode(Mode::peek()); }},
        {u"3-today"_s,
         [](IslandModel& model) {
             model.setBucket(Bucket::today);
             model.setMode(Mode::open());
         }},
        {u"4-draft"_s, [](IslandModel& model) { model.setDraft(u"dentist fri 3:30pm"_s); }},
        {u"5-upcoming"_s,
         [](IslandModel& model) {
             model.setDraft(QString());
             model.setBucket(Bucket::upcoming);
         }},
        {u"6-backlog"_s, [](IslandModel& model) { model.setBucket(Bucket::backlog); }},
        {u"7-schedule"_s,
         [](IslandModel& model) {
             const auto tasks = backlog(model.store().todos(), model.now(), model.calendar());
             model.setScheduling(tasks.empty() ? std::nullopt : std::optional(tasks.front().id));
         }},
        {u"8-alert"_s,
         [](IslandModel& model) {
             model.setScheduling(std::nullopt);
             model.setMode(Mode::closed());
             if (const std::optional<Todo>& next = model.nextTimed()) {
                 model.setMode(Mode::alert(next->id));
             }
         }},
        {u"9-glass-dark"_s,
         [look](IslandModel& model) {
             model.setMode(Mode::closed());
             look(model, IslandTheme::Glass, GlassLook::Dark);
             model.setBucket(Bucket::today);
             model.setMode(Mode::open());
         }},
        {u"10-glass-light"_s,
         [](IslandModel& model) { model.preferences()->setGlassLook(GlassLook::Light); }},
        {u"11-settings"_s,
         [](IslandModel& model) {
             model.preferences()->setTheme(IslandTheme::Standard);
             model.setPage(Page::Settings);
         }},
        {u"12-glass-settings"_s,
         [look](IslandModel& model) { look(model, IslandTheme::Glass, GlassLook::Dark); }},
        {u"13-glass-light-settings"_s,
         [](IslandModel& model) { model.preferences()->setGlassLook(GlassLook::Light); }},
    };
}

class Snapshot : public QObject {
public:
    Snapshot(IslandModel& model, const Panel& panel, const QString& folder)
        : QObject(&model)
        , model_(model)
        , window_(panel.window)
        , folder_(folder)
        , states_(states()) {}

    void start() {
        states_.front().setUp(model_);
        QTimer::singleShot(settleTime, this, [this] { step(0); });
    }

private:
    void step(std::size_t index) {
        save(states_[index].name);
        if (index + 1 == states_.size()) {
            QCoreApplication::quit();
            return;
        }
        states_[index + 1].setUp(model_);
        QTimer::singleShot(settleTime, this, [this, index] { step(index + 1); });
    }

    void save(const QString& name) const {
        if (!window_) {
            return;
        }
        const QImage image = window_->grabWindow();
        static_cast<void>(image.save(QDir(folder_).filePath(name + u".png"_s), "PNG"));
    }

    IslandModel& model_;
    QPointer<QQuickWindow> window_;
    QString folder_;
    std::vector<State> states_;
};

} // namespace

void startSnapshot(IslandModel& model, const Panel& panel, const QString& folder) {
    static_cast<void>(QDir().mkpath(folder));
    isolate(model, panel);
    (new Snapshot(model, panel, folder))->start();
}

} // namespace kelo::Harness
