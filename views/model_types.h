#pragma once

#include "island_model.h"

#include <QQmlEngine>

// The model's types as QML names them. The model links no QML module, so they are registered
// here, as foreign types: the objects the shell builds (uncreatable), the enumerations (written
// by name in QML: Island.Open, Island.Today, Springs.List) and the value types.
namespace kelo::views {

struct IslandModelForeign {
    Q_GADGET
    QML_FOREIGN(kelo::IslandModel)
    QML_NAMED_ELEMENT(IslandModel)
    QML_UNCREATABLE("The shell builds the one island model.")
};

struct PreferencesForeign {
    Q_GADGET
    QML_FOREIGN(kelo::Preferences)
    QML_NAMED_ELEMENT(Preferences)
    QML_UNCREATABLE("The island model owns the preferences.")
};

struct UndoToastForeign {
    Q_GADGET
    QML_FOREIGN(kelo::UndoToast)
    QML_NAMED_ELEMENT(UndoToast)
    QML_UNCREATABLE("The island model owns the toast.")
};

struct LaunchAtLoginForeign {
    Q_GADGET
    QML_FOREIGN(kelo::LaunchAtLogin)
    QML_NAMED_ELEMENT(LaunchAtLogin)
    QML_UNCREATABLE("The island model owns the login item.")
};

struct DisplayTextsForeign {
    Q_GADGET
    QML_FOREIGN(kelo::DisplayTexts)
    QML_NAMED_ELEMENT(DisplayTexts)
    QML_UNCREATABLE("The island model owns the display texts.")
};

struct TaskListModelForeign {
    Q_GADGET
    QML_FOREIGN(kelo::TaskListModel)
    QML_NAMED_ELEMENT(TaskListModel)
    QML_UNCREATABLE("The island model owns its lists.")
};

namespace IslandForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(kelo::island)
QML_NAMED_ELEMENT(Island)
} // namespace IslandForeign

namespace SpringsForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(kelo::motion)
QML_NAMED_ELEMENT(Springs)
} // namespace SpringsForeign

struct ModeForeign {
    Q_GADGET
    QML_FOREIGN(kelo::Mode)
    QML_VALUE_TYPE(mode)
};

struct ToastForeign {
    Q_GADGET
    QML_FOREIGN(kelo::Toast)
    QML_VALUE_TYPE(toast)
};

struct TaskValueForeign {
    Q_GADGET
    QML_FOREIGN(kelo::TaskValue)
    QML_VALUE_TYPE(taskValue)
};

struct PlanValueForeign {
    Q_GADGET
    QML_FOREIGN(kelo::PlanValue)
    QML_VALUE_TYPE(planValue)
};

struct ProgressValueForeign {
    Q_GADGET
    QML_FOREIGN(kelo::ProgressValue)
    QML_VALUE_TYPE(progressValue)
};

} // namespace kelo::views
