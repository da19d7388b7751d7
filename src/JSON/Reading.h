#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "JSON/AnyCodable.h"
#include "JSON/CodingErrors.h"
#include "JSON/Tape.h"

namespace quorvane::json {

/// The state of one decoding. A reading function returns false after it has noted what is wrong here; on the way out
/// each caller adds its step of the path. Nothing is noted while a lenient field is read.
class Reading {
public:
    /// Notes a value of another kind than the field; always false.
    QV_COLD bool mismatch(std::string_view expected, Element found);
    /// Notes a value of the right kind that is no value of the field; always false.
    QV_COLD bool corrupted(std::string_view expected, Element found);
    /// Notes a failure in words of its own; always false.
    QV_COLD bool fail(DecodingError::Kind kind, std::string_view expected, std::string description);

    /// The failure happened below this key or index.
    QV_COLD void within(std::string_view key);
    QV_COLD void within(std::size_t index);

    /// The failure turned out not to count.
    void forget() { path.clear(); }
    [[noreturn]] void raise();

    /// While one lives, failures count but are not noted.
    class Quietly {
    public:
        explicit Quietly(Reading& theReading) : reading(theReading) { ++reading.quietness; }
        Quietly(const Quietly&) = delete;
        Quietly& operator=(const Quietly&) = delete;
        ~Quietly() { --reading.quietness; }

    private:
        Reading& reading;
    };

private:
    int quietness = 0;
    DecodingError::Kind kind = DecodingError::Kind::malformed;
    std::string expectedType;
    std::string description;
    /// From the innermost step outwards.
    CodingPath path;
};

/// The whole number that a JSON number is, however it is written.
inline bool readInteger(Element value, std::int64_t& field, std::string_view expected, Reading& reading) {
    switch (value.type()) {
        case ElementType::int64:
            field = value.integer();
            return true;
        case ElementType::decimal:
            if (const std::optional<std::int64_t> whole = value.wholeNumber()) {
                field = *whole;
                return true;
            }
            return reading.corrupted(expected, value);
        case ElementType::uint64:
            return reading.corrupted(expected, value);
        default:
            return reading.mismatch(expected, value);
    }
}

/// Any JSON number.
inline bool readNumber(Element value, double& field, std::string_view expected, Reading& reading) {
    switch (value.type()) {
        case ElementType::decimal:
            field = value.decimal();
            return true;
        case ElementType::int64:
            field = static_cast<double>(value.integer());
            return true;
        case ElementType::uint64:
            field = static_cast<double>(value.naturalNumber());
            return true;
        default:
            return reading.mismatch(expected, value);
    }
}

inline bool readText(Element value, std::string_view& field, std::string_view expected, Reading& reading) {
    if (!value.isString()) {
        return reading.mismatch(expected, value);
    }
    field = value.text();
    return true;
}

inline bool readBoolean(Element value, bool& field, Reading& reading) {
    if (!value.isBoolean()) {
        return reading.mismatch("boolean", value);
    }
    field = value.boolean();
    return true;
}

/// A value of any kind but null, by the rules of `AnyCodable`.
bool readAny(Element value, AnyCodable& field, Reading& reading);
bool readAny(Element value, AnyCodable::Dictionary& field, Reading& reading);

} // namespace quorvane::json
