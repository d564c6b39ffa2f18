#include "island_types.h"

#include "qml_values.h"

namespace kelo {

QString Mode::alertIdText() const {
    return kelo::idText(alertId_);
}

QString Toast::idText() const {
    return kelo::idText(id);
}

} // namespace kelo
