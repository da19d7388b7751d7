#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

#include "JSON/JSON.h"
#include "Platform/Location.h"

namespace quorvane {

/// One case of the published vectors of the claim rule.
struct ClaimVector {
    std::string name;
    platform::Coordinate user;
    /// The members of the task that the rule looks at; without a key.
    AnyCodable::Dictionary task;
    double miles = 0;
    bool isAllowed = false;
};

/// All cases of testing/vectors/claim-rule.json. Throws when the file cannot be read.
inline std::vector<ClaimVector> claimVectors() {
    std::ifstream file(QUORVANE_CLAIM_VECTORS);
    const AnyCodable document = json::readExactly(std::string(std::istreambuf_iterator<char>(file), {}));
    const auto member = [](const AnyCodable& object, const char* key) -> const AnyCodable& {
        return std::get<AnyCodable::Dictionary>(object.value).at(key);
    };
    const auto number = [&](const AnyCodable& object, const char* key) {
        return std::get<double>(member(object, key).value);
    };
    std::vector<ClaimVector> vectors;
    for (const AnyCodable& entry : std::get<AnyCodable::List>(member(document, "cases").value)) {
        const AnyCodable& user = member(entry, "user");
        vectors.push_back({.name = std::get<std::string>(member(entry, "name").value),
                           .user = {.latitude = number(user, "latitude"), .longitude = number(user, "longitude")},
                           .task = std::get<AnyCodable::Dictionary>(member(entry, "task").value),
                           .miles = number(entry, "miles"),
                           .isAllowed = std::get<bool>(member(entry, "allowed").value)});
    }
    return vectors;
}

} // namespace quorvane
