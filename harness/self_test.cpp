#include "self_test.h"

#include "synthetic_input.h"

#include <QCoreApplication>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <island_model.h>
#include <qml_values.h>
#include <vector>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace kelo::Harness {

namespace {

constexpr auto stepInterval = 800ms;

void print(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

// One run of the script: the steps and the failures counted so far.
class SelfTest : public QObject {
public:
    SelfTest(IslandModel& model, const Panel& panel)
        : QObject(&model)
        , model_(model)
        , panel_(panel)
        , input_(*panel.window) {}

    void start() {
        steps_ = script();
        scheduleStep(0);
    }

private:
    // Each step is scheduled when the one before it has run, so that a busy machine that runs a
    // step late cannot run the next one right after it: every step finds what the step before
    // it started given its 0.8 s.
    void scheduleStep(std::size_t index) {
        QTimer::singleShot(stepInterval, this, [this, index] {
            steps_[index]();
            if (index + 1 < steps_.size()) {
                scheduleStep(index + 1);
            }
        });
    }

    void expect(bool ok, const QString& label) {
        print((ok ? u"PASS "_s : u"FAIL "_s) + label);
        if (!ok) {
            ++failures_;
        }
    }

    [[nodiscard]] std::optional<Todo> taskTitled(std::string_view title) const {
        const auto& todos = model_.store().todos();
        const auto found = std::ranges::find(todos, title, &Todo::title);
        return found == todos.end() ? std::nullopt : std::optional(*found);
    }

    [[nodiscard]] bool alerting(std::string_view title) const {
        return model_.alertTodo() && model_.alertTodo()->title == title;
    }

    // A click where a person would click the island: 0.12 of its width from its left edge and
    // 0.3 of its height from its bottom edge.
    void click() {
        const QRectF frame = panel_.islandFrame();
        input_.click({frame.left() + 0.12 * frame.width(), frame.bottom() - 0.3 * frame.height()});
    }

    std::vector<std::function<void()>> script();

    IslandModel& model_;
    Panel panel_;
    SyntheticInput input_;
    std::vector<std::function<void()>> steps_;
    int failures_ = 0;
};

std::vector<std::function<void()>> SelfTest::script() {
    const auto mode = [this] { return model_.mode().kind(); };
    return {
        // 1
        [this] { model_.hotKey(); },
        // 2
        [this, mode] {
            expect(mode() == ModeKind::Open, u"hotkey opens the island"_s);
            Platform& desktop = model_.platform();
            print(u"INFO  key window: "_s + (desktop.isPanelKey() ? u"true"_s : u"false"_s) +
                  u", app active: "_s + (desktop.isActive() ? u"true"_s : u"false"_s));
            input_.type(u"groceries 5pm"_s);
        },
        // 3
        [this] {
            expect(model_.draft() == u"groceries 5pm"_s, u"typing goes to the add field"_s);
            input_.press(Qt::Key_Return, Qt::NoModifier, u"\r"_s);
        },
        // 4
        [this] {
            const std::optional<Todo> added = taskTitled("groceries");
            expect(added && added->day == model_.today() && added->minute == 1020 &&
                       model_.draft().isEmpty(),
                   u"Return adds groceries today at 5 PM"_s);
            input_.press(Qt::Key_3, Qt::ControlModifier, u"3"_s);
        },
        // 5
        [this] {
            expect(model_.bucket() == Bucket::backlog, u"⌘3 shows Backlog"_s);
            input_.type(u"x"_s);
            input_.press(Qt::Key_Escape, Qt::NoModifier, u"\x1b"_s);
        },
        // 6
        [this, mode] {
            expect(model_.draft().isEmpty() && mode() == ModeKind::Open,
                   u"the first Esc clears the draft"_s);
            input_.press(Qt::Key_Escape, Qt::NoModifier, u"\x1b"_s);
        },
        // 7
        [this, mode] { expect(mode() == ModeKind::Closed, u"the second Esc closes the island"_s); },
        // 8
        [this] {
            expect(!model_.platform().isPanelKey() && !model_.platform().isActive(),
                   u"the closed island gives the keyboard back"_s);
            model_.hover(true);
        },
        // 9
        [this, mode] {
            expect(mode() == ModeKind::Peek, u"hover peeks"_s);
            model_.hover(false);
        },
        // 10
        [this, mode] {
            expect(mode() == ModeKind::Closed, u"leaving the peek closes it"_s);
            model_.open(false);
            model_.hover(true);
            model_.hover(false);
            model_.setDraft(u"buy"_s);
        },
        // 11
        [this, mode] {
            expect(mode() == ModeKind::Open,
                   u"typing keeps the island open after the pointer leaves"_s);
            model_.setDraft(QString());
            model_.setMode(Mode::closed());
            static_cast<void>(model_.store().add("ping", model_.today(),
                                                 Day::minuteOf(currentTime(), model_.calendar())));
            model_.tick();
        },
        // 12
        [this] {
            expect(alerting("ping"), u"a task alerts at its time"_s);
            if (const std::optional<Todo> ping = taskTitled("ping"); ping && ping->minute) {
                model_.move(*ping, model_.today(), std::max<std::int64_t>(*ping->minute - 1, 0));
            }
            model_.setMode(Mode::closed());
            model_.tick();
        },
        // 13
        [this] {
            expect(alerting("ping"), u"a moved task alerts again"_s);
            model_.setMode(Mode::closed());
            model_.open(false);
        },
        // 14
        [this] { input_.press(Qt::Key_Comma, Qt::ControlModifier, u","_s); },
        // 15
        [this] {
            expect(model_.page() == Page::Settings, u"⌘, opens settings"_s);
            input_.press(Qt::Key_Escape, Qt::NoModifier, u"\x1b"_s);
        },
        // 16
        [this, mode] {
            expect(model_.page() == Page::Tasks && mode() == ModeKind::Open,
                   u"Esc goes back from settings to the tasks"_s);
            Preferences& preferences = *model_.preferences();
            const std::optional<QString> before = preferences.storedTheme();
            preferences.setTheme(before == u"glass"_s ? IslandTheme::Standard : IslandTheme::Glass);
            expect(preferences.storedTheme() == before,
                   u"an isolated run does not save settings"_s);
            preferences.setTheme(IslandTheme::Standard);
            model_.setMode(Mode::closed());
        },
        // 17
        [this] { model_.setMode(Mode::peek()); },
        // 18
        [this] { click(); },
        // 19
        [this, mode] {
            expect(mode() == ModeKind::Open, u"Standard: a click on the peek opens the island"_s);
            model_.setMode(Mode::closed());
            model_.preferences()->setTheme(IslandTheme::Glass);
        },
        // 20
        [this] { model_.setMode(Mode::peek()); },
        // 21
        [this] { click(); },
        // 22
        [this, mode] {
            expect(mode() == ModeKind::Open, u"Glass: a click on the peek opens the island"_s);
            model_.setBucket(Bucket::backlog);
        },
        // 23
        [this] { input_.type(u"glass task"_s); },
        // 24
        [this] {
            expect(model_.draft() == u"glass task"_s, u"Glass: typing goes to the add field"_s);
            model_.setDraft(QString());
            model_.setMode(Mode::closed());
            model_.preferences()->setTheme(IslandTheme::Standard);
            print(failures_ == 0 ? u"ALL PASS"_s : QString::number(failures_) + u" FAILED"_s);
            QCoreApplication::exit(failures_ == 0 ? 0 : 1);
        },
    };
}

} // namespace

void startSelfTest(IslandModel& model, const Panel& panel) {
    isolate(model, panel);
    (new SelfTest(model, panel))->start();
}

} // namespace kelo::Harness
