#include "Device/QVUtils.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Device.h"
#include "Platform/Platform.h"

namespace quorvane {
namespace {

using Model = std::pair<std::string_view, std::string_view>;

constexpr auto models = std::to_array<Model>({
    {"iPod5,1", "iPod touch (5th generation)"},
    {"iPod7,1", "iPod touch (6th generation)"},
    {"iPod9,1", "iPod touch (7th generation)"},
    {"iPhone3,1", "iPhone 4"},
    {"iPhone3,2", "iPhone 4"},
    {"iPhone3,3", "iPhone 4"},
    {"iPhone4,1", "iPhone 4s"},
    {"iPhone5,1", "iPhone 5"},
    {"iPhone5,2", "iPhone 5"},
    {"iPhone5,3", "iPhone 5c"},
    {"iPhone5,4", "iPhone 5c"},
    {"iPhone6,1", "iPhone 5s"},
    {"iPhone6,2", "iPhone 5s"},
    {"iPhone7,2", "iPhone 6"},
    {"iPhone7,1", "iPhone 6 Plus"},
    {"iPhone8,1", "iPhone 6s"},
    {"iPhone8,2", "iPhone 6s Plus"},
    {"iPhone8,4", "iPhone SE"},
    {"iPhone9,1", "iPhone 7"},
    {"iPhone9,3", "iPhone 7"},
    {"iPhone9,2", "iPhone 7 Plus"},
    {"iPhone9,4", "iPhone 7 Plus"},
    {"iPhone10,1", "iPhone 8"},
    {"iPhone10,4", "iPhone 8"},
    {"iPhone10,2", "iPhone 8 Plus"},
    {"iPhone10,5", "iPhone 8 Plus"},
    {"iPhone10,3", "iPhone X"},
    {"iPhone10,6", "iPhone X"},
    {"iPhone11,2", "iPhone XS"},
    {"iPhone11,4", "iPhone XS Max"},
    {"iPhone11,6", "iPhone XS Max"},
    {"iPhone11,8", "iPhone XR"},
    {"iPhone12,1", "iPhone 11"},
    {"iPhone12,3", "iPhone 11 Pro"},
    {"iPhone12,5", "iPhone 11 Pro Max"},
    {"iPhone12,8", "iPhone SE (2nd generation)"},
    {"iPad2,1", "iPad 2"},
    {"iPad2,2", "iPad 2"},
    {"iPad2,3", "iPad 2"},
    {"iPad2,4", "iPad 2"},
    {"iPad3,1", "iPad (3rd generation)"},
    {"iPad3,2", "iPad (3rd generation)"},
    {"iPad3,3", "iPad (3rd generation)"},
    {"iPad3,4", "iPad (4th generation)"},
    {"iPad3,5", "iPad (4th generation)"},
    {"iPad3,6", "iPad (4th generation)"},
    {"iPad6,11", "iPad (5th generation)"},
    {"iPad6,12", "iPad (5th generation)"},
    {"iPad7,5", "iPad (6th generation)"},
    {"iPad7,6", "iPad (6th generation)"},
    {"iPad7,11", "iPad (7th generation)"},
    {"iPad7,12", "iPad (7th generation)"},
    {"iPad4,1", "iPad Air"},
    {"iPad4,2", "iPad Air"},
    {"iPad4,3", "iPad Air"},
    {"iPad5,3", "iPad Air 2"},
    {"iPad5,4", "iPad Air 2"},
    {"iPad11,4", "iPad Air (3rd generation)"},
    {"iPad11,5", "iPad Air (3rd generation)"},
    {"iPad2,5", "iPad mini"},
    {"iPad2,6", "iPad mini"},
    {"iPad2,7", "iPad mini"},
    {"iPad4,4", "iPad mini 2"},
    {"iPad4,5", "iPad mini 2"},
    {"iPad4,6", "iPad mini 2"},
    {"iPad4,7", "iPad mini 3"},
    {"iPad4,8", "iPad mini 3"},
    {"iPad4,9", "iPad mini 3"},
    {"iPad5,1", "iPad mini 4"},
    {"iPad5,2", "iPad mini 4"},
    {"iPad11,1", "iPad mini (5th generation)"},
    {"iPad11,2", "iPad mini (5th generation)"},
    {"iPad6,3", "iPad Pro (9.7-inch)"},
    {"iPad6,4", "iPad Pro (9.7-inch)"},
    {"iPad7,3", "iPad Pro (10.5-inch)"},
    {"iPad7,4", "iPad Pro (10.5-inch)"},
    {"iPad8,1", "iPad Pro (11-inch)"},
    {"iPad8,2", "iPad Pro (11-inch)"},
    {"iPad8,3", "iPad Pro (11-inch)"},
    {"iPad8,4", "iPad Pro (11-inch)"},
    {"iPad8,9", "iPad Pro (11-inch) (2nd generation)"},
    {"iPad8,10", "iPad Pro (11-inch) (2nd generation)"},
    {"iPad6,7", "iPad Pro (12.9-inch)"},
    {"iPad6,8", "iPad Pro (12.9-inch)"},
    {"iPad7,1", "iPad Pro (12.9-inch) (2nd generation)"},
    {"iPad7,2", "iPad Pro (12.9-inch) (2nd generation)"},
    {"iPad8,5", "iPad Pro (12.9-inch) (3rd generation)"},
    {"iPad8,6", "iPad Pro (12.9-inch) (3rd generation)"},
    {"iPad8,7", "iPad Pro (12.9-inch) (3rd generation)"},
    {"iPad8,8", "iPad Pro (12.9-inch) (3rd generation)"},
    {"iPad8,11", "iPad Pro (12.9-inch) (4th generation)"},
    {"iPad8,12", "iPad Pro (12.9-inch) (4th generation)"},
    {"AppleTV5,3", "Apple TV"},
    {"AppleTV6,2", "Apple TV 4K"},
    {"AudioAccessory1,1", "HomePod"},
});

/// In the order of identifiers: every request names the model.
constexpr auto modelsByIdentifier = [] {
    auto sorted = models;
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}();

/// The table's name for an identifier, or the identifier itself.
std::string_view modelName(std::string_view identifier) {
    const auto* const found = std::ranges::lower_bound(modelsByIdentifier, identifier, {}, &Model::first);
    return found == modelsByIdentifier.end() || found->first != identifier ? identifier : found->second;
}

/// The keys of a stored location.
namespace recordKey {
constexpr const char* latitude = "latitude";
constexpr const char* longitude = "longitude";
constexpr const char* horizontalAccuracy = "horizontalAccuracy";
constexpr const char* verticalAccuracy = "verticalAccuracy";
constexpr const char* timestamp = "timestamp";
} // namespace recordKey

/// The entry with that key, where it is of that kind.
template <class T>
const T* find(const AnyCodable::Dictionary& dictionary, const char* key) {
    const auto found = dictionary.find(std::string_view(key));
    return found == dictionary.end() ? nullptr : std::get_if<T>(&found->second.value);
}

} // namespace

std::string QVUtils::getDeviceId() {
    return platform::current().device().identifierForVendor().value_or("");
}

std::string QVUtils::getDeviceModel() {
    std::string identifier = platform::current().device().hardwareIdentifier();
    std::erase(identifier, '\0');
    return mapToMobile(identifier);
}

bool QVUtils::isValidLocation(const std::optional<platform::Location>& location) {
    if (!location) {
        return false;
    }
    const double latitude = location->coordinate.latitude;
    const double longitude = location->coordinate.longitude;
    // It is the latitude again that is held against 180: applications rely on longitudes being let through.
    return latitude != 0 && latitude > -90 && latitude < 90 && longitude != 0 && longitude > -180 && latitude < 180 &&
           location->horizontalAccuracy > 0;
}

AnyCodable::Dictionary QVUtils::fromLocation(const platform::Location& location) {
    constexpr double largest = (std::numeric_limits<double>::max)();
    constexpr double notKnown = -1;
    const double longitude = location.coordinate.longitude;
    const double horizontal = location.horizontalAccuracy;
    const double vertical = location.verticalAccuracy;
    return {{recordKey::latitude, location.coordinate.latitude},
            {recordKey::longitude, std::isfinite(longitude) ? longitude : largest},
            {recordKey::horizontalAccuracy, std::isfinite(horizontal) ? horizontal : largest},
            {recordKey::verticalAccuracy, std::isfinite(vertical) ? vertical : notKnown},
            {recordKey::timestamp, static_cast<std::int64_t>(location.timestamp.time_since_epoch().count())}};
}

std::optional<platform::Location> QVUtils::toLocation(const std::optional<AnyCodable::Dictionary>& record) {
    if (!record) {
        return std::nullopt;
    }
    const auto* const latitude = find<double>(*record, recordKey::latitude);
    const auto* const longitude = find<double>(*record, recordKey::longitude);
    const auto* const horizontal = find<double>(*record, recordKey::horizontalAccuracy);
    const auto* const vertical = find<double>(*record, recordKey::verticalAccuracy);
    const auto* const timestamp = find<std::int64_t>(*record, recordKey::timestamp);
    if (latitude == nullptr || longitude == nullptr || horizontal == nullptr || vertical == nullptr ||
        timestamp == nullptr) {
        return std::nullopt;
    }
    return platform::Location{
        {*latitude, *longitude}, *horizontal, *vertical, platform::Date(std::chrono::nanoseconds(*timestamp))};
}

bool QVUtils::getLocationBackgroundMode() {
    const AnyCodable::Dictionary& information = platform::current().application().informationDictionary();
    const auto* const modes = find<AnyCodable::List>(information, "UIBackgroundModes");
    const auto isText = [](const AnyCodable& mode) { return std::holds_alternative<std::string>(mode.value); };
    return modes != nullptr && std::all_of(modes->begin(), modes->end(), isText) &&
           std::find(modes->begin(), modes->end(), AnyCodable("location")) != modes->end();
}

std::string QVUtils::mapToMobile(std::string_view identifier) {
    if (identifier != "i386" && identifier != "x86_64") {
        return std::string(modelName(identifier));
    }
    // A variable that names a simulator again stands for itself: the table does not know simulators.
    const std::string simulated =
        platform::current().device().environment("SIMULATOR_MODEL_IDENTIFIER").value_or("iOS");
    return "Simulator " + std::string(modelName(simulated));
}

} // namespace quorvane
