#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "Cache/CacheAware.h"
#include "Cache/Changes.h"
#include "Cache/DiskCache.h"
#include "Cache/MemoryCache.h"
#include "Cache/Trackers.h"

namespace quorvane::QVCache {

/// Memory in front of disk: reads memory first, writes to both, and tells observers of changes. For one caller at a
/// time, as its two levels are; observers may be added and cancelled by any thread at any time.
///
/// Observers run inside the operation that made the change and may use the cache. The order among them is open.
template <class Key, class Value>
class HybridCache : public CacheAware<Key, Value>,
                    public CacheTracker<Key, Value>,
                    public KeyTracker<Key, Value>,
                    public std::enable_shared_from_this<HybridCache<Key, Value>> {
    struct Private {};

public:
    using Memory = MemoryCache<Key, Value>;
    using Disk = DiskCache<Key, Value>;
    using CacheObserver = typename CacheTracker<Key, Value>::CacheObserver;
    using KeyObserver = typename KeyTracker<Key, Value>::KeyObserver;

    [[nodiscard]] static std::shared_ptr<HybridCache> make(std::shared_ptr<Memory> memory, std::shared_ptr<Disk> disk) {
        auto made = std::make_shared<HybridCache>(Private(), std::move(memory), std::move(disk));
        made->disk->onRemove = [weak = made->weak_from_this()](const std::string& path) {
            if (const auto self = weak.lock()) {
                self->handleRemovedObject(path);
            }
        };
        return made;
    }

    HybridCache(Private, std::shared_ptr<Memory> theMemory, std::shared_ptr<Disk> theDisk)
        : disk(std::move(theDisk)), memory(std::move(theMemory)) {}

    /// The memory's entry, else the disk's, which is then copied into memory for another twelve hours, whatever its own
    /// expiry. Fails as the disk fails.
    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override {
        if (auto found = memory->find(key)) {
            return found;
        }
        EntryPointer<Key, Value> found = disk->entry(key);
        memory->add(found->value, key);
        return found;
    }

    /// Memory first, then disk; a failure of the disk passes through, and then memory keeps the value and no observer
    /// is told. The value before is read only where somebody observes the key.
    void add(Value value, const Key& key) override {
        const bool isObserved = keyObserver(key) != nullptr;
        std::optional<Value> before;
        if (isObserved) {
            before = currentValue(key);
        }
        memory->add(value, key);
        disk->add(value, key);
        if (isObserved) {
            // Looked up again: an observer may have gone while the value before was read.
            if (const auto observer = keyObserver(key)) {
                (*observer)(*this, KeyChange<Value>::EDIT(std::move(before), std::move(value)));
            }
        }
        notifyCacheTrackers(CacheChange<Key>::ADD(key));
    }

    /// All entries in memory, an empty list included. When one of memory's keys has expired or was evicted, the names
    /// in the disk's directory are read as if they were keys, which succeeds only for an empty directory: a listed name
    /// is hashed again.
    [[nodiscard]] EntryList<Key, Value> all() {
        try {
            return memory->all();
        } catch (const QVStorageException&) {
            return allOnDisk();
        }
    }

    ObservationToken addObserver(CacheObserver observer) override {
        const std::lock_guard lock(mutex);
        const std::uint64_t number = ++lastNumber;
        caches.emplace(number, std::make_shared<const CacheObserver>(std::move(observer)));
        return ObservationToken([weak = this->weak_from_this(), number] {
            if (const auto self = weak.lock()) {
                const std::lock_guard ownLock(self->mutex);
                self->caches.erase(number);
            }
        });
    }

    ObservationToken addObserver(const Key& key, KeyObserver observer) override {
        const std::lock_guard lock(mutex);
        const std::uint64_t number = ++lastNumber;
        keys[key] = {number, std::make_shared<const KeyObserver>(std::move(observer))};
        return ObservationToken([weak = this->weak_from_this(), key, number] {
            if (const auto self = weak.lock()) {
                const std::lock_guard ownLock(self->mutex);
                if (const auto found = self->keys.find(key);
                    found != self->keys.end() && found->second.first == number) {
                    self->keys.erase(found);
                }
            }
        });
    }

    const std::shared_ptr<Disk> disk;
    const std::shared_ptr<Memory> memory;

private:
    using KeyObserverPointer = std::shared_ptr<const KeyObserver>;

    [[nodiscard]] KeyObserverPointer keyObserver(const Key& key) const {
        const std::lock_guard lock(mutex);
        const auto found = keys.find(key);
        return found == keys.end() ? nullptr : found->second.second;
    }

    [[nodiscard]] std::optional<Value> currentValue(const Key& key) {
        try {
            return this->value(key);
        } catch (...) {
            return std::nullopt;
        }
    }

    [[nodiscard]] EntryList<Key, Value> allOnDisk() {
        std::error_code error;
        const auto names = disk->fileManager.list(disk->path, error);
        if (error) {
            throw std::system_error(error);
        }
        EntryList<Key, Value> entries;
        for (const std::string& name : *names) {
            entries.push_back(disk->entry(name));
        }
        return entries;
    }

    void notifyCacheTrackers(const CacheChange<Key>& change) {
        for (const std::uint64_t number : observerNumbers()) {
            std::shared_ptr<const CacheObserver> observer;
            {
                const std::lock_guard lock(mutex);
                if (const auto found = caches.find(number); found != caches.end()) {
                    observer = found->second;
                }
            }
            if (observer) {
                (*observer)(*this, change);
            }
        }
    }

    [[nodiscard]] std::vector<std::uint64_t> observerNumbers() const {
        const std::lock_guard lock(mutex);
        std::vector<std::uint64_t> numbers;
        for (const auto& [number, observer] : caches) {
            numbers.push_back(number);
        }
        return numbers;
    }

    void notifyTracker(const KeyChange<Value>& change, const std::function<bool(const Key&)>& whereKey) {
        std::vector<KeyObserverPointer> told;
        {
            const std::lock_guard lock(mutex);
            for (const auto& [key, observer] : keys) {
                if (whereKey(key)) {
                    told.push_back(observer.second);
                }
            }
        }
        for (const KeyObserverPointer& observer : told) {
            (*observer)(*this, change);
        }
    }

    void handleRemovedObject(const std::string& path) {
        notifyTracker(KeyChange<Value>::REMOVE(), [&](const Key& key) { return disk->makeFilePath(key) == path; });
    }

    /// Guards the observers alone.
    mutable std::mutex mutex;
    std::uint64_t lastNumber = 0;
    std::map<std::uint64_t, std::shared_ptr<const CacheObserver>> caches;
    std::map<Key, std::pair<std::uint64_t, KeyObserverPointer>> keys;
};

} // namespace quorvane::QVCache
