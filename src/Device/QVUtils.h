#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "JSON/AnyCodable.h"
#include "Platform/Location.h"

namespace quorvane {

/// What the library knows about the device and its locations. Safe from any thread; nothing here fails.
class QVUtils {
public:
    QVUtils() = delete;

    /// The identifier for vendor as an upper-case UUID; empty when the platform withholds it.
    [[nodiscard]] static std::string getDeviceId();

    /// The marketing name of the hardware, for example "iPhone 11"; the hardware's own identifier when it is not known.
    /// On a simulator ("i386", "x86_64") "Simulator " and the name of the model in the environment variable
    /// SIMULATOR_MODEL_IDENTIFIER, or "Simulator iOS" without one.
    [[nodiscard]] static std::string getDeviceModel();

    /// Whether a location can be one of the device: its latitude is between -90 and 90 and not 0, its longitude is
    /// above -180 and not 0, and its horizontal accuracy is positive. A longitude above 180 is not refused.
    [[nodiscard]] static bool isValidLocation(const std::optional<platform::Location>& location);

    /// A location as it is stored: "latitude", "longitude", "horizontalAccuracy" and "verticalAccuracy" as doubles and
    /// "timestamp" as an integer of nanoseconds since 1970. An accuracy that is no finite number is stored as the
    /// largest one (horizontal) or as not known (vertical).
    [[nodiscard]] static AnyCodable::Dictionary fromLocation(const platform::Location& location);
    /// What `fromLocation` made, to the last bit; none where anything is missing or of another kind.
    [[nodiscard]] static std::optional<platform::Location> toLocation(
        const std::optional<AnyCodable::Dictionary>& record);

    /// Whether the application declares that it uses the location in the background ("UIBackgroundModes" in its
    /// information dictionary lists "location"). Main thread only.
    [[nodiscard]] static bool getLocationBackgroundMode();

private:
    [[nodiscard]] static std::string mapToMobile(std::string_view identifier);
};

} // namespace quorvane
