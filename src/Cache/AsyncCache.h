#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "Cache/HybridCache.h"
#include "Platform/SerialQueue.h"

namespace quorvane::QVCache {

/// A hybrid cache whose operations return at once and answer through completions, in the order of the calls, on the
/// cache's own queue. A completion gets either a result or the exception that the operation failed with, never both; it
/// must not throw, and may use this cache. Safe from any thread.
///
/// The forms without a completion wait for what was called before them. Observers run on this queue too, inside the
/// operation that made the change (on the caller's thread for a form without a completion). They may use this cache in
/// both forms, but not wait for the other front of the same hybrid cache (see `CacheTracker`).
template <class Key, class Value>
class AsyncCache : public CacheAware<Key, Value>, public CacheTracker<Key, Value>, public KeyTracker<Key, Value> {
public:
    using Hybrid = HybridCache<Key, Value>;
    using EntryCompletion = std::function<void(const EntryPointer<Key, Value>&, std::exception_ptr)>;
    using ValueCompletion = std::function<void(const std::optional<Value>&, std::exception_ptr)>;
    using ListCompletion = std::function<void(const EntryList<Key, Value>&, std::exception_ptr)>;
    using AddCompletion = std::function<void(std::exception_ptr)>;

    AsyncCache(std::shared_ptr<Hybrid> theInnerCache, std::unique_ptr<platform::SerialQueue> theQueue)
        : innerCache(std::move(theInnerCache)), queue(std::move(theQueue)) {}

    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override {
        return queue->sync([&, cache = innerCache] { return cache->entry(key); });
    }

    void entry(const Key& key, EntryCompletion completion) {
        queue->async([cache = innerCache, key, completion = std::move(completion)] {
            EntryPointer<Key, Value> found;
            const std::exception_ptr error = failureOf([&] { found = cache->entry(key); });
            completion(found, error);
        });
    }

    using CacheAware<Key, Value>::value;

    void value(const Key& key, ValueCompletion completion) {
        entry(key,
              [completion = std::move(completion)](const EntryPointer<Key, Value>& found, std::exception_ptr error) {
                  completion(found ? std::optional<Value>(found->value) : std::nullopt, std::move(error));
              });
    }

    [[nodiscard]] EntryList<Key, Value> all() {
        return queue->sync([&, cache = innerCache] { return cache->all(); });
    }

    void all(ListCompletion completion) {
        queue->async([cache = innerCache, completion = std::move(completion)] {
            EntryList<Key, Value> entries;
            const std::exception_ptr error = failureOf([&] { entries = cache->all(); });
            completion(entries, error);
        });
    }

    void add(Value value, const Key& key) override {
        queue->sync([&, cache = innerCache] { cache->add(std::move(value), key); });
    }

    void add(Value value, const Key& key, AddCompletion completion) {
        queue->async([cache = innerCache, key, value = std::move(value), completion = std::move(completion)] {
            completion(failureOf([&] { cache->add(value, key); }));
        });
    }

    ObservationToken addObserver(typename Hybrid::CacheObserver observer) override {
        return innerCache->addObserver(std::move(observer));
    }

    ObservationToken addObserver(const Key& key, typename Hybrid::KeyObserver observer) override {
        return innerCache->addObserver(key, std::move(observer));
    }

    const std::shared_ptr<Hybrid> innerCache;
    const std::unique_ptr<platform::SerialQueue> queue;

private:
    template <class Operation>
    static std::exception_ptr failureOf(Operation operation) {
        try {
            operation();
            return nullptr;
        } catch (...) {
            return std::current_exception();
        }
    }
};

} // namespace quorvane::QVCache
