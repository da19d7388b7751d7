#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"
#include "Places/QVAddressConfidence.h"
#include "Platform/Location.h"

namespace quorvane {

/// A postal address with its point.
///
/// A new address lies at latitude 0, longitude 0. One decoded on its own (a task's location) lies at the invalid
/// coordinate unless both a latitude and a longitude were read; no malformed key ever fails it.
class QVAddress {
public:
    using Confidence = QVAddressConfidence;

    std::optional<std::string> address1;
    std::optional<std::string> address2;
    std::optional<std::string> city;
    std::optional<Confidence> confidence = Confidence::NONE;
    std::optional<platform::Coordinate> coordinate = platform::Coordinate{};
    std::optional<std::string> country;
    /// On one line. Decoding computes it anew and keeps no text that was sent; within a place it stays absent.
    std::optional<std::string> formattedAddress;
    /// Metres.
    std::optional<double> geofenceRadius;
    std::optional<std::string> name;
    /// The street number.
    std::optional<std::string> number;
    std::optional<std::string> phoneNumber;
    /// "zipCode" in JSON.
    std::optional<std::string> postalCode;
    std::optional<std::string> state;
    std::optional<std::string> borough;
    std::optional<std::string> countryCode;
    std::optional<std::string> countryFlag;
    std::optional<std::string> county;
    std::optional<std::string> neighborhood;
    std::optional<std::string> placeLabel;
    std::optional<std::string> stateCode;

    /// "1 Main St Suite 4 Town, CA 90000 US". An absent part is an empty text; its separators are written all the same
    /// and no blank is removed.
    [[nodiscard]] static std::string formatAddress(const QVAddress& address);

    /// Decoding begins at the invalid coordinate and ends with the text of the address.
    void willDecode();
    void didDecode();

    static constexpr auto codingKeys = json::keys(
        json::lenient(json::key("address1", &QVAddress::address1)),
        json::lenient(json::key("address2", &QVAddress::address2)), json::lenient(json::key("city", &QVAddress::city)),
        json::lenient(json::key("confidence", &QVAddress::confidence)),
        json::lenient(json::pair("latitude", "longitude", &QVAddress::coordinate)),
        json::lenient(json::key("country", &QVAddress::country)),
        json::lenient(json::key("formattedAddress", &QVAddress::formattedAddress)),
        json::lenient(json::key("geofenceRadius", &QVAddress::geofenceRadius)),
        json::lenient(json::key("name", &QVAddress::name)), json::lenient(json::key("number", &QVAddress::number)),
        json::lenient(json::key("phoneNumber", &QVAddress::phoneNumber)),
        json::lenient(json::key("zipCode", &QVAddress::postalCode)),
        json::lenient(json::key("state", &QVAddress::state)), json::lenient(json::key("borough", &QVAddress::borough)),
        json::lenient(json::key("countryCode", &QVAddress::countryCode)),
        json::lenient(json::key("countryFlag", &QVAddress::countryFlag)),
        json::lenient(json::key("county", &QVAddress::county)),
        json::lenient(json::key("neighborhood", &QVAddress::neighborhood)),
        json::lenient(json::key("placeLabel", &QVAddress::placeLabel)),
        json::lenient(json::key("stateCode", &QVAddress::stateCode)));
};

} // namespace quorvane
