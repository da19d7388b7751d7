#pragma once

#include <cstddef>
#include <functional>

namespace quorvane::QVCache {

/// A key as the object cache holds it: equal to another one when their keys are, and found by its plain key too.
template <class Key>
struct WrappedKey {
    Key key;

    friend bool operator==(const WrappedKey& a, const WrappedKey& b) { return a.key == b.key; }
    friend bool operator==(const WrappedKey& a, const Key& b) { return a.key == b; }

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const WrappedKey& wrapped) const { return std::hash<Key>()(wrapped.key); }
        std::size_t operator()(const Key& plain) const { return std::hash<Key>()(plain); }
    };
};

} // namespace quorvane::QVCache
