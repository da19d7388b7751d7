#pragma once

#include <memory>
#include <utility>

#include "Cache/HybridCache.h"
#include "Platform/SerialQueue.h"

namespace quorvane::QVCache {

/// A hybrid cache for callers of any thread: one operation at a time, on the caller's thread, which waits for its turn.
/// Observers run there too, inside the operation that made the change, and may use this cache and let go of it, but not
/// wait for the other front of the same hybrid cache (see `CacheTracker`).
template <class Key, class Value>
class SyncCache : public CacheAware<Key, Value>, public CacheTracker<Key, Value>, public KeyTracker<Key, Value> {
public:
    using Hybrid = HybridCache<Key, Value>;

    SyncCache(std::shared_ptr<Hybrid> theInnerCache, std::unique_ptr<platform::SerialQueue> theQueue)
        : innerCache(std::move(theInnerCache)), queue(std::move(theQueue)) {}

    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override {
        return queue->sync([&, cache = innerCache] { return cache->entry(key); });
    }

    void add(Value value, const Key& key) override {
        queue->sync([&, cache = innerCache] { cache->add(std::move(value), key); });
    }

    [[nodiscard]] EntryList<Key, Value> all() {
        return queue->sync([&, cache = innerCache] { return cache->all(); });
    }

    ObservationToken addObserver(typename Hybrid::CacheObserver observer) override {
        return innerCache->addObserver(std::move(observer));
    }

    ObservationToken addObserver(const Key& key, typename Hybrid::KeyObserver observer) override {
        return innerCache->addObserver(key, std::move(observer));
    }

    const std::shared_ptr<Hybrid> innerCache;
    const std::unique_ptr<platform::SerialQueue> queue;
};

} // namespace quorvane::QVCache
