#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>

namespace quorvane {

/// A set of ways to travel, as bit flags. A value; a single mode is the set that holds it alone.
class QVRouteMode {
public:
    static const QVRouteMode FOOT;
    static const QVRouteMode BIKE;
    static const QVRouteMode CAR;
    static const QVRouteMode TRANSIT;

    constexpr QVRouteMode() = default;
    /// Bits beyond the four modes are kept.
    constexpr explicit QVRouteMode(std::int64_t bits) : rawValue(bits) {}
    constexpr QVRouteMode(std::initializer_list<QVRouteMode> modes) {
        for (const QVRouteMode& mode : modes) {
            rawValue |= mode.rawValue;
        }
    }

    std::int64_t rawValue = 0;

    [[nodiscard]] constexpr bool isEmpty() const { return rawValue == 0; }
    /// Whether all of @p member's modes are in this set; always so for the empty set.
    [[nodiscard]] constexpr bool contains(QVRouteMode member) const {
        return (rawValue & member.rawValue) == member.rawValue;
    }

    [[nodiscard]] constexpr QVRouteMode union_(QVRouteMode other) const {
        return QVRouteMode(rawValue | other.rawValue);
    }
    [[nodiscard]] constexpr QVRouteMode intersection(QVRouteMode other) const {
        return QVRouteMode(rawValue & other.rawValue);
    }
    /// What is in exactly one of the two.
    [[nodiscard]] constexpr QVRouteMode symmetricDifference(QVRouteMode other) const {
        return QVRouteMode(rawValue ^ other.rawValue);
    }
    [[nodiscard]] constexpr QVRouteMode subtracting(QVRouteMode other) const {
        return QVRouteMode(rawValue & ~other.rawValue);
    }

    constexpr void formUnion(QVRouteMode other) { *this = union_(other); }
    constexpr void formIntersection(QVRouteMode other) { *this = intersection(other); }
    constexpr void formSymmetricDifference(QVRouteMode other) { *this = symmetricDifference(other); }
    constexpr void subtract(QVRouteMode other) { *this = subtracting(other); }

    struct Insertion;
    /// Adds @p member and tells whether any of it was new.
    constexpr Insertion insert(QVRouteMode member);
    /// Takes @p member out; answers the part of it that was there, none when nothing was.
    constexpr std::optional<QVRouteMode> remove(QVRouteMode member) {
        const QVRouteMode present = intersection(member);
        subtract(member);
        return present.isEmpty() ? std::nullopt : std::optional(present);
    }
    /// Adds @p member whether or not it is there; answers the part of it that was, none when nothing was.
    constexpr std::optional<QVRouteMode> update(QVRouteMode member) {
        const QVRouteMode present = intersection(member);
        formUnion(member);
        return present.isEmpty() ? std::nullopt : std::optional(present);
    }

    [[nodiscard]] constexpr bool isSubset(QVRouteMode of) const { return of.contains(*this); }
    [[nodiscard]] constexpr bool isSuperset(QVRouteMode of) const { return contains(of); }
    [[nodiscard]] constexpr bool isStrictSubset(QVRouteMode of) const { return isSubset(of) && *this != of; }
    [[nodiscard]] constexpr bool isStrictSuperset(QVRouteMode of) const { return isSuperset(of) && *this != of; }
    [[nodiscard]] constexpr bool isDisjoint(QVRouteMode with) const { return intersection(with).isEmpty(); }

    friend constexpr bool operator==(const QVRouteMode&, const QVRouteMode&) = default;
};

/// What became of an insertion.
struct QVRouteMode::Insertion {
    bool inserted = false;
    /// The member as the set holds it now.
    QVRouteMode memberAfterInsert;
};

constexpr QVRouteMode::Insertion QVRouteMode::insert(QVRouteMode member) {
    const bool isNew = !contains(member);
    formUnion(member);
    return {isNew, member};
}

inline constexpr QVRouteMode QVRouteMode::FOOT{std::int64_t{1}};
inline constexpr QVRouteMode QVRouteMode::BIKE{std::int64_t{2}};
inline constexpr QVRouteMode QVRouteMode::CAR{std::int64_t{4}};
inline constexpr QVRouteMode QVRouteMode::TRANSIT{std::int64_t{8}};

} // namespace quorvane
