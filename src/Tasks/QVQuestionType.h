#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// What a question asks for; decides how it is shown and how its answer is built.
enum class QVQuestionType : int {
    barcodeScan,
    date,
    multipleAnswers,
    numericOpenEnded,
    openEnded,
    ratingScale,
    ratingScaleWithText,
    singleAnswer,
    time,
    undefined,
};

template <>
inline constexpr auto json::rawValues<QVQuestionType> = json::textTable<QVQuestionType>({
    {QVQuestionType::barcodeScan, "barcodeScan"},
    {QVQuestionType::date, "date"},
    {QVQuestionType::multipleAnswers, "multipleAnswers"},
    {QVQuestionType::numericOpenEnded, "numericOpenEnded"},
    {QVQuestionType::openEnded, "openEnded"},
    {QVQuestionType::ratingScale, "ratingScale"},
    {QVQuestionType::ratingScaleWithText, "ratingScaleWithText"},
    {QVQuestionType::singleAnswer, "singleAnswer"},
    {QVQuestionType::time, "time"},
    {QVQuestionType::undefined, "undefined"},
});
template <>
inline constexpr std::string_view json::typeName<QVQuestionType> = "question type";

} // namespace quorvane
