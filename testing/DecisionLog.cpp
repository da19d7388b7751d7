#include "testing/DecisionLog.h"

#include <utility>

#include "testing/DecisionText.h"

namespace quorvane::testing {

DecisionLog::DecisionLog(const platform::Clock& theClock, Format theFormat, Output theOutput)
    : clock(theClock), format(theFormat), output(std::move(theOutput)) {}

DecisionLog::~DecisionLog() = default;

void DecisionLog::observe(const observed::Observation& observation) {
    counts.count(observation);
    write(observation);
}

void DecisionLog::happened(const phone::Event& event) {
    write(event);
}

void DecisionLog::summarize(const phone::Usage& usage) {
    write(SummaryRecord{counts, usage});
}

template <class Happening>
void DecisionLog::write(const Happening& happening) {
    const platform::Date now = clock.now();
    output(format == Format::text ? decisionText(now, happening) : decisionJSON(now, happening));
}

} // namespace quorvane::testing
