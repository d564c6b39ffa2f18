#include "island_types.h"

#include "qml_values.h"

namespace kelo {

QVariant Mode::alertIdValue() const {
    return idValue(alertId_);
}

QString Toast::idText() const {
    return kelo::idText(id);
}

} // namespace kelo
