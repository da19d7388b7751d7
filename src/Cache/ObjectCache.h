#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace quorvane::QVCache {

/// Objects under keys, bounded by their count and their total cost; beyond a limit the ones used least recently go.
/// Any object may be gone at any time: the system runs short of memory and `removeAll` is called. Safe from any thread.
///
/// A key may be looked up by anything that @p Hash takes, when it is transparent, and that compares to a key.
template <class Key, class Object, class Hash = std::hash<Key>>
class ObjectCache {
public:
    using Pointer = std::shared_ptr<Object>;

    /// 0 means no limit.
    void setCountLimit(std::uint64_t limit) {
        const std::lock_guard lock(mutex);
        countLimit = limit;
        evict();
    }

    /// 0 means no limit.
    void setTotalCostLimit(std::uint64_t limit) {
        const std::lock_guard lock(mutex);
        costLimit = limit;
        evict();
    }

    void setObject(Pointer object, const Key& key, std::uint64_t cost = 0) {
        const std::lock_guard lock(mutex);
        erase(key);
        recent.push_front({key, std::move(object), cost});
        places.emplace(key, recent.begin());
        totalCost += cost;
        evict();
    }

    /// Null when there is none.
    template <class Lookup>
    [[nodiscard]] Pointer object(const Lookup& key) {
        const std::lock_guard lock(mutex);
        const auto found = places.find(key);
        if (found == places.end()) {
            return nullptr;
        }
        if (found->second != recent.begin()) {
            recent.splice(recent.begin(), recent, found->second);
        }
        return found->second->object;
    }

    template <class Lookup>
    void removeObject(const Lookup& key) {
        const std::lock_guard lock(mutex);
        erase(key);
    }

    void removeAll() {
        const std::lock_guard lock(mutex);
        places.clear();
        recent.clear();
        totalCost = 0;
    }

    [[nodiscard]] std::size_t count() const {
        const std::lock_guard lock(mutex);
        return recent.size();
    }

private:
    struct Item {
        Key key;
        Pointer object;
        std::uint64_t cost;
    };

    template <class Lookup>
    void erase(const Lookup& key) {
        if (const auto found = places.find(key); found != places.end()) {
            totalCost -= found->second->cost;
            recent.erase(found->second);
            places.erase(found);
        }
    }

    void evict() {
        while (!recent.empty() &&
               ((countLimit != 0 && recent.size() > countLimit) || (costLimit != 0 && totalCost > costLimit))) {
            totalCost -= recent.back().cost;
            places.erase(recent.back().key);
            recent.pop_back();
        }
    }

    mutable std::mutex mutex;
    /// Most recently used first.
    std::list<Item> recent;
    std::unordered_map<Key, typename std::list<Item>::iterator, Hash, std::equal_to<>> places;
    std::uint64_t countLimit = 0;
    std::uint64_t costLimit = 0;
    std::uint64_t totalCost = 0;
};

} // namespace quorvane::QVCache
