#pragma once

#include <memory>
#include <utility>

#include "Cache/AsyncCache.h"
#include "Cache/Configs.h"
#include "Cache/SyncCache.h"
#include "Platform/Platform.h"

namespace quorvane::QVCache {

/// The front of a keyed store in memory and on disk: a hybrid cache and two ways to use it from any thread. The two
/// have a queue each, so that work through both is not serialised against each other. What is called on this class goes
/// through the synchronous one. An observer must not use the blocking forms of the other front than the one in which it
/// was called (see `CacheTracker`).
template <class Key, class Value>
class Cache : public CacheAware<Key, Value>, public CacheTracker<Key, Value>, public KeyTracker<Key, Value> {
public:
    template <class K>
    using CacheChange = QVCache::CacheChange<K>;
    using Hybrid = HybridCache<Key, Value>;

    /// Throws `std::system_error` when the disk's directory cannot be made; nothing else is made then.
    Cache(DiskConfig diskConfig, MemoryConfig memoryConfig, std::shared_ptr<Transformer<Value>> transformer)
        : Cache(makeHybrid(std::move(diskConfig), std::move(memoryConfig), std::move(transformer))) {}

    explicit Cache(std::shared_ptr<Hybrid> hybrid)
        : asyncCache(hybrid, std::make_unique<platform::SerialQueue>("Cache.AsyncCache.Queue")),
          hybridCache(hybrid),
          syncCache(hybrid, std::make_unique<platform::SerialQueue>("Cache.SyncCache.Queue")) {}

    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override { return syncCache.entry(key); }

    void add(Value value, const Key& key) override { syncCache.add(std::move(value), key); }

    ObservationToken addObserver(typename Hybrid::CacheObserver observer) override {
        return syncCache.addObserver(std::move(observer));
    }

    ObservationToken addObserver(const Key& key, typename Hybrid::KeyObserver observer) override {
        return syncCache.addObserver(key, std::move(observer));
    }

    AsyncCache<Key, Value> asyncCache;
    const std::shared_ptr<Hybrid> hybridCache;
    SyncCache<Key, Value> syncCache;

private:
    static std::shared_ptr<Hybrid> makeHybrid(DiskConfig diskConfig, MemoryConfig memoryConfig,
                                              std::shared_ptr<Transformer<Value>> transformer) {
        auto disk = std::make_shared<DiskCache<Key, Value>>(std::move(diskConfig), platform::current().files(),
                                                            std::move(transformer));
        auto memory = std::make_shared<MemoryCache<Key, Value>>(std::move(memoryConfig));
        return Hybrid::make(std::move(memory), std::move(disk));
    }
};

} // namespace quorvane::QVCache
