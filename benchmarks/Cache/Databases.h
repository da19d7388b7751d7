#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "benchmarks/Cache/InstalledNative.h"

namespace quorvane {

/// A key-value store to compare with.
class KeyValueStore {
public:
    KeyValueStore() = default;
    KeyValueStore(const KeyValueStore&) = delete;
    KeyValueStore& operator=(const KeyValueStore&) = delete;
    virtual ~KeyValueStore() = default;

    virtual void put(const std::string& key, std::string_view value) = 0;
    virtual std::optional<std::string> get(const std::string& key) = 0;
};

/// SQLite with a write-ahead log that is not synchronised at every commit.
std::unique_ptr<KeyValueStore> openSQLite(const std::string& directory);

/// LevelDB, not synchronised.
std::unique_ptr<KeyValueStore> openLevelDB(const std::string& directory);

} // namespace quorvane
