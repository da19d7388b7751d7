#pragma once

#include <functional>

#include "Cache/Changes.h"

namespace quorvane::QVCache {

template <class Key, class Value>
class HybridCache;

/// A cache that can be observed as a whole.
template <class Key, class Value>
class CacheTracker {
public:
    using CacheObserver = std::function<void(HybridCache<Key, Value>&, const CacheChange<Key>&)>;

    CacheTracker() = default;
    CacheTracker(const CacheTracker&) = delete;
    CacheTracker& operator=(const CacheTracker&) = delete;
    virtual ~CacheTracker() = default;

    /// Calls @p observer after each change of the cache, inside the operation that made it. It must not throw.
    virtual ObservationToken addObserver(CacheObserver observer) = 0;
};

/// A cache whose keys can be observed.
template <class Key, class Value>
class KeyTracker {
public:
    using KeyObserver = std::function<void(HybridCache<Key, Value>&, const KeyChange<Value>&)>;

    KeyTracker() = default;
    KeyTracker(const KeyTracker&) = delete;
    KeyTracker& operator=(const KeyTracker&) = delete;
    virtual ~KeyTracker() = default;

    /// Calls @p observer after each change of @p key's value, inside the operation that made it. It must not throw. A
    /// key has one observer: a new one takes the place of the old.
    virtual ObservationToken addObserver(const Key& key, KeyObserver observer) = 0;
};

} // namespace quorvane::QVCache
