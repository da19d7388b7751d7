#pragma once

#include "Platform/Clock.h"
#include "Platform/Location.h"
#include "Tracking/Observed.h"
#include "testing/PhoneEvents.h"

namespace quorvane::tool {

/// Hears what a replay does, as it does it.
class ReplayListener {
public:
    ReplayListener() = default;
    ReplayListener(const ReplayListener&) = delete;
    ReplayListener& operator=(const ReplayListener&) = delete;
    virtual ~ReplayListener() = default;

    /// The phone will be there at the fix's own time.
    virtual void recorded(const platform::Location& fix) = 0;
    /// @p now is virtual time.
    virtual void observed(platform::Date now, const observed::Observation& observation) = 0;
    virtual void happened(platform::Date /*now*/, const testing::phone::Event& /*event*/) {}
};

} // namespace quorvane::tool
