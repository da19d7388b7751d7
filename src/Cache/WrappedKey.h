#pragma once

#include <cstddef>
#include <functional>

namespace quorvane::QVCache {

/// A key as the object cache takes it: equal to another one when their keys are.
template <class Key>
struct WrappedKey {
    Key key;

    friend bool operator==(const WrappedKey&, const WrappedKey&) = default;
};

} // namespace quorvane::QVCache

template <class Key>
struct std::hash<quorvane::QVCache::WrappedKey<Key>> {
    std::size_t operator()(const quorvane::QVCache::WrappedKey<Key>& wrapped) const {
        return std::hash<Key>()(wrapped.key);
    }
};
