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
    ///
    /// Where a hybrid cache has a synchronous and an asynchronous front, an observer may use the front whose operation
    /// called it, and of the other one only the forms with a completion: two observers that wait for each other's
    /// front wait for ever.
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

    /// Calls @p observer after each change of @p key's value, inside the operation that made it. It must not throw, and
    /// waits for no other front of the same cache (see `CacheTracker`). A key has one observer: a new one takes the
    /// place of the old.
    virtual ObservationToken addObserver(const Key& key, KeyObserver observer) = 0;
};

} // namespace quorvane::QVCache
