#pragma once

#include "island_model.h"

#include <QQmlEngine>

namespace kelo::views {

// The one IslandModel is built by the shell and handed to IslandView; QML may name its type but
// never create one.
struct IslandModelForeign {
    Q_GADGET
    QML_FOREIGN(kelo::IslandModel)
    QML_NAMED_ELEMENT(IslandModel)
    QML_UNCREATABLE("The shell builds the one island model.")
};

} // namespace kelo::views
