#pragma once

#include <utility>

#include "Cache/Entry.h"

namespace quorvane::QVCache {

/// What every store and cache offers: `entry` and `add`, and the entry's value by `value`. Failures are exceptions:
/// `QVStorageException`, `std::system_error`, `json::DecodingError`, `json::EncodingError`.
template <class Key, class Value>
class CacheAware {
public:
    CacheAware() = default;
    CacheAware(const CacheAware&) = delete;
    CacheAware& operator=(const CacheAware&) = delete;
    virtual ~CacheAware() = default;

    [[nodiscard]] virtual EntryPointer<Key, Value> entry(const Key& key) = 0;
    virtual void add(Value value, const Key& key) = 0;

    /// Fails as `entry` fails.
    [[nodiscard]] Value value(const Key& key) { return entry(key)->value; }
};

} // namespace quorvane::QVCache
