#pragma once

#include <cstdint>
#include <string>

#include "Platform/Location.h"
#include "sandbox/Chance.h"
#include "sandbox/SeedText.h"

namespace quorvane::sandbox {

/// An invented place: what its own JSON and that of its tasks are made from.
struct SeedPlace {
    std::int64_t number = 0;
    std::string id;
    std::string key;
    std::string name;
    std::string client;
    platform::Coordinate coordinate;
    /// The place as JSON, its address flat beside its own keys.
    ObjectText json;
    /// The keys of its address alone.
    ObjectText address;
};

[[nodiscard]] SeedPlace makePlace(Chance& chance, std::int64_t number, const platform::Coordinate& coordinate);

/// "place-00042": @p number in so many digits that the order of texts is the order of numbers.
[[nodiscard]] std::string numbered(const std::string& word, std::int64_t number);

} // namespace quorvane::sandbox
