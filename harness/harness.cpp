#include "harness.h"

#include "self_test.h"
#include "snapshot.h"

#include <QGuiApplication>
#include <QPointer>
#include <cstdio>
#include <island_model.h>

namespace kelo::Harness {

void isolate(IslandModel& model, const Panel& panel) {
    panel.hide();
    model.setIsolated(true);
    Preferences& preferences = *model.preferences();
    preferences.setTheme(IslandTheme::Standard);
    preferences.setGlassLook(GlassLook::System);
    preferences.setReminderSound(true);
    // A run must never hold the user's keyboard.
    if (model.platform().isActive()) {
        model.platform().deactivate();
    }
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &model,
                     [model = QPointer<IslandModel>(&model)](Qt::ApplicationState state) {
                         if (model && state == Qt::ApplicationActive) {
                             model->platform().deactivate();
                         }
                     });
}

void start(IslandModel& model, const Panel& panel) {
    if (!panel.window) {
        return;
    }
    if (qEnvironmentVariableIsSet("KELO_SNAPSHOT")) {
        startSnapshot(model, panel, qEnvironmentVariable("KELO_SNAPSHOT"));
    }
    if (qEnvironmentVariableIsSet("KELO_SELFTEST")) {
        if (!qEnvironmentVariableIsSet("KELO_DATA")) {
            std::puts("KELO_SELFTEST needs KELO_DATA=<scratch file>. It never runs on your real "
                      "list.");
            std::fflush(stdout);
            QCoreApplication::exit(2);
            return;
        }
        startSelfTest(model, panel);
    }
}

} // namespace kelo::Harness
