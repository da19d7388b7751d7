#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Platform/Clock.h"

namespace quorvane::QVCache {

/// One stored item.
template <class Key, class Value>
class Entry {
public:
    Entry() = default;
    Entry(Key theKey, Value theValue, platform::Date theExpiry, std::optional<std::string> theFilePath)
        : key(std::move(theKey)), value(std::move(theValue)), expiry(theExpiry), filePath(std::move(theFilePath)) {}

    Key key{};
    Value value{};
    platform::Date expiry;
    /// The file that held the entry; only on entries that were read from disk.
    std::optional<std::string> filePath;

    static constexpr auto codingKeys =
        json::keys(json::key("key", &Entry::key), json::key("value", &Entry::value),
                   json::key("expiry", &Entry::expiry), json::key("filePath", &Entry::filePath));
};

template <class Key, class Value>
using EntryPointer = std::shared_ptr<Entry<Key, Value>>;

template <class Key, class Value>
using EntryList = std::vector<EntryPointer<Key, Value>>;

} // namespace quorvane::QVCache
