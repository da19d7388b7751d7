#include "Models/DesiredAccuracyName.h"

namespace quorvane {

std::optional<std::string_view> nameOf(QVDesiredAccuracy accuracy) {
    switch (accuracy) {
        case QVDesiredAccuracy::NONE:
            return "NONE";
        case QVDesiredAccuracy::LOW:
            return "LOW";
        case QVDesiredAccuracy::MEDIUM:
            return "MEDIUM";
        case QVDesiredAccuracy::HIGH:
            return "HIGH";
    }
    return std::nullopt;
}

} // namespace quorvane
