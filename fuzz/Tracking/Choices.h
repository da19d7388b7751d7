#pragma once

#include "Core/Enumerations.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Location.h"
#include "fuzz/Bytes.h"
#include "testing/ScriptedAnswer.h"

/// What the fuzzer of the decision pipeline chooses from: what phones, hosts and services do, and the ends of each
/// range.
namespace quorvane::fuzz {

/// A point some metres from the one place that most of the others are near to, or a special one.
[[nodiscard]] platform::Location chooseFix(Bytes& bytes, platform::Date now);

[[nodiscard]] QVLocationSource chooseSource(Bytes& bytes);
[[nodiscard]] QVDesiredAccuracy chooseAccuracy(Bytes& bytes);
[[nodiscard]] QuorvaneTrackingOptions chooseOptions(Bytes& bytes, platform::Date now);

/// What the service answers to a search.
[[nodiscard]] testing::ScriptedAnswer chooseAnswer(Bytes& bytes);

/// Of a moment; the ends of time included.
[[nodiscard]] platform::Date chooseDate(Bytes& bytes, platform::Date now);

} // namespace quorvane::fuzz
