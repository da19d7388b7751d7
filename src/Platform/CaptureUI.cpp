#include "Platform/CaptureUI.h"

#include <utility>

#include "Platform/Registry.h"

namespace quorvane::platform {
namespace {

struct CaptureUIHolder {
    std::shared_ptr<CaptureUI> captureUI;
};

} // namespace

void setCaptureUI(std::shared_ptr<CaptureUI> captureUI) {
    shared<CaptureUIHolder>().captureUI = std::move(captureUI);
}

std::shared_ptr<CaptureUI> captureUI() {
    return shared<CaptureUIHolder>().captureUI;
}

} // namespace quorvane::platform
