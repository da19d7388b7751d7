#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include "Cache/CacheAware.h"
#include "Cache/Configs.h"
#include "Cache/MemoryWarning.h"
#include "Cache/ObjectCache.h"
#include "Cache/QVStorageError.h"
#include "Cache/WrappedKey.h"

namespace quorvane::QVCache {

/// The memory level: at most 100 entries, each for twelve hours. For one caller at a time: callers of several threads
/// do no harm, but each may see the other's operation half done.
///
/// Entries may go at any time: those used least recently beyond the limit, all when the system runs short of memory.
/// Their keys stay until a read finds them missing.
template <class Key, class Value>
class MemoryCache : public CacheAware<Key, Value> {
public:
    using Objects = ObjectCache<WrappedKey<Key>, Entry<Key, Value>, typename WrappedKey<Key>::Hash>;

    /// The limits are fixed, whatever the configuration holds. A platform must be installed.
    explicit MemoryCache(MemoryConfig theConfig) : config(std::move(theConfig)), wrapped(std::make_shared<Objects>()) {
        wrapped->setCountLimit(100);
        wrapped->setTotalCostLimit(100);
        onMemoryWarning([weak = std::weak_ptr<Objects>(wrapped)] {
            if (const auto objects = weak.lock()) {
                objects->removeAll();
            }
        });
    }

    /// Never fails.
    void add(Value value, const Key& key) override {
        const platform::Date expiry = config.dateProvider() + entryLifetime;
        wrapped->setObject(std::make_shared<Entry<Key, Value>>(key, std::move(value), expiry, std::nullopt), {key});
        const std::lock_guard lock(mutex);
        keys.insert(key);
    }

    /// Fails with `NOT_FOUND` when there is none, or none any more (see `find`).
    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override {
        if (EntryPointer<Key, Value> found = find(key)) {
            return found;
        }
        throw QVStorageException(QVStorageError::NOT_FOUND);
    }

    /// The entry, or null when there is none or it is over: an entry is valid strictly before its expiry. The key is
    /// forgotten then. What `entry` does, for callers to whom a miss is no failure.
    [[nodiscard]] EntryPointer<Key, Value> find(const Key& key) {
        EntryPointer<Key, Value> found = wrapped->object(key);
        if (found && config.dateProvider() < found->expiry) {
            return found;
        }
        if (found) {
            wrapped->removeObject(key);
        }
        const std::lock_guard lock(mutex);
        keys.erase(key);
        return nullptr;
    }

    /// Every entry, in the order of the keys; an empty list when nothing was added. The first entry that is missing or
    /// has expired ends it with `NOT_FOUND`: no partial list is handed out.
    [[nodiscard]] EntryList<Key, Value> all() {
        EntryList<Key, Value> entries;
        for (const Key& key : keysNow()) {
            entries.push_back(entry(key));
        }
        return entries;
    }

    /// The keys that were added and not found missing since. The object cache cannot be enumerated.
    [[nodiscard]] std::set<Key> keysNow() const {
        const std::lock_guard lock(mutex);
        return keys;
    }

    const MemoryConfig config;
    const std::shared_ptr<Objects> wrapped;

private:
    mutable std::mutex mutex;
    std::set<Key> keys;
};

} // namespace quorvane::QVCache
