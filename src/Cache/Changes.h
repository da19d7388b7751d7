#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

#include "Models/Equality.h"

namespace quorvane::QVCache {

/// Whether two values of a cache can be compared; pointers are by their objects.
template <class Value>
inline constexpr bool hasEquality = std::equality_comparable<Value>;
template <class Object>
inline constexpr bool hasEquality<std::shared_ptr<Object>> = std::equality_comparable<Object>;

/// What happened to the value of one key. Two changes can be compared when two values can.
template <class Value>
class KeyChange {
public:
    struct Edit {
        /// None when there was no value that could be read.
        std::optional<Value> before;
        Value after;
    };
    struct Remove {};

    static KeyChange EDIT(std::optional<Value> before, Value after) {
        return KeyChange(Edit{std::move(before), std::move(after)});
    }
    static KeyChange REMOVE() { return KeyChange(Remove{}); }

    /// What was edited; null for a removal.
    [[nodiscard]] const Edit* edit() const { return std::get_if<Edit>(&value); }

    [[nodiscard]] bool operator==(const KeyChange& other) const requires hasEquality<Value> {
        const Edit* const a = edit();
        const Edit* const b = other.edit();
        if (a == nullptr || b == nullptr) {
            return a == b;
        }
        return a->before.has_value() == b->before.has_value() && (!a->before || areEqual(*a->before, *b->before)) &&
               areEqual(a->after, b->after);
    }

private:
    explicit KeyChange(std::variant<Edit, Remove> theValue) : value(std::move(theValue)) {}

    template <class Plain>
    static bool areEqual(const Plain& a, const Plain& b) {
        return a == b;
    }
    template <class Object>
    static bool areEqual(const std::shared_ptr<Object>& a, const std::shared_ptr<Object>& b) {
        return haveEqualObjects(a, b);
    }

    std::variant<Edit, Remove> value;
};

/// What happened to a cache. This version only ever adds.
template <class Key>
class CacheChange {
public:
    enum class Kind { ADD, REMOVE, CLEAR, CLEAR_EXPIRED };

    static CacheChange ADD(Key key) { return {Kind::ADD, std::move(key)}; }
    static CacheChange REMOVE(Key key) { return {Kind::REMOVE, std::move(key)}; }
    static CacheChange CLEAR() { return {Kind::CLEAR, std::nullopt}; }
    static CacheChange CLEAR_EXPIRED() { return {Kind::CLEAR_EXPIRED, std::nullopt}; }

    friend bool operator==(const CacheChange&, const CacheChange&) = default;

    Kind kind;
    /// With `ADD` and `REMOVE`.
    std::optional<Key> key;

private:
    CacheChange(Kind theKind, std::optional<Key> theKey) : kind(theKind), key(std::move(theKey)) {}
};

/// Stands for one registered observer. Cancelling it removes the observer: from any thread, from inside the observer
/// too. It does nothing when it was cancelled before or the cache is gone. Dropping the token cancels nothing.
class ObservationToken {
public:
    explicit ObservationToken(std::function<void()> theOnCancel) : onCancel(std::move(theOnCancel)) {}

    void cancel() const {
        if (onCancel) {
            onCancel();
        }
    }

private:
    std::function<void()> onCancel;
};

} // namespace quorvane::QVCache
