#pragma once

#include <cstdint>
#include <string>
#include <variant>

#pragma push_macro("max")
#pragma push_macro("min")
#undef max
#undef min

namespace quorvane {

/// A failed check on an answer, with a message for the user. A value.
///
/// The library's own submit operation raises `MISSING_TASK_KEY`, `MISSING_PHOTO` and `UNKNOWN`; the others are for the
/// answer screens of the host, which check what was entered against the question.
class QVTaskSubmitError {
public:
    /// The picked choices are fewer than @p min or more than @p max.
    static QVTaskSubmitError INVALID_RANGE_ANSWER(std::int64_t min, std::int64_t max);
    /// The text is shorter than @p min or longer than @p max characters.
    static QVTaskSubmitError INVALID_RANGE_CHARACTERS(std::int64_t min, std::int64_t max);
    /// The number is below @p min or above @p max.
    static QVTaskSubmitError INVALID_RANGE_NUMBER(std::int64_t min, std::int64_t max);
    static QVTaskSubmitError INVALID_NUMBER_FORMAT();
    static QVTaskSubmitError INVALID_VALUE();
    static QVTaskSubmitError MISSING_BARCODE();
    static QVTaskSubmitError MISSING_DATE();
    static QVTaskSubmitError MISSING_PHOTO();
    static QVTaskSubmitError MISSING_RATING();
    static QVTaskSubmitError MISSING_TIME();
    static QVTaskSubmitError MISSING_TASK_KEY();
    static QVTaskSubmitError UNKNOWN();

    /// The sentence for the user, in English.
    [[nodiscard]] std::string message() const;

    friend bool operator==(const QVTaskSubmitError&, const QVTaskSubmitError&) = default;

    enum class RangeOf { answers, characters, number };

    struct InvalidRange {
        RangeOf what;
        std::int64_t min;
        std::int64_t max;

        friend bool operator==(const InvalidRange&, const InvalidRange&) = default;
    };

    enum class Failure {
        invalidNumberFormat,
        invalidValue,
        missingBarcode,
        missingDate,
        missingPhoto,
        missingRating,
        missingTime,
        missingTaskKey,
        unknown,
    };

    /// What the error is, for a host that tells the cases apart.
    std::variant<Failure, InvalidRange> value;

private:
    explicit QVTaskSubmitError(Failure failure) : value(failure) {}
    explicit QVTaskSubmitError(InvalidRange range) : value(range) {}
};

} // namespace quorvane

#pragma pop_macro("min")
#pragma pop_macro("max")
