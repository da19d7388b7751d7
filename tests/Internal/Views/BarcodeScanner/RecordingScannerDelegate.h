#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Platform/CaptureUI.h"

namespace quorvane::capture {

using Calls = std::vector<std::string>;

/// Keeps what it is told: "failed", "stopped", and "succeeded" with the code.
class RecordingScannerDelegate final : public BarcodeScannerDelegate {
public:
    Calls calls;
    std::function<void(const std::string& call)> whenCalled;

    void scanningDidFail() override { keep("failed"); }
    void scanningDidStop() override { keep("stopped"); }
    void scanningSucceeded(const std::string& code) override { keep("succeeded " + code); }

private:
    void keep(const std::string& call) {
        calls.push_back(call);
        // Of its own, for the call may set another or none.
        if (const auto then = whenCalled) {
            then(call);
        }
    }
};

} // namespace quorvane::capture
