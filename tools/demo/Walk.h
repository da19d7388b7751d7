#pragma once

#include <cstddef>
#include <string>

#include "JSON/AnyCodable.h"
#include "tools/demo/Ride.h"

namespace quorvane::tool {

class Stage;

/// The rider of the demo: signs in and searches at points of the ride. Everything throws a `Failure` for any status but
/// a success.
class Walk {
public:
    explicit Walk(Stage& theStage) : stage(theStage) {}

    void signIn();
    void searchAt(const Ride::Stop& stop, bool isTimed);

    /// "38 places and 40 tasks found at 6 points of the ride".
    [[nodiscard]] std::string summary() const;
    [[nodiscard]] AnyCodable::Dictionary document() const;

private:
    Stage& stage;
    std::size_t placesFound = 0;
    std::size_t tasksFound = 0;
    AnyCodable::List stops;
};

} // namespace quorvane::tool
