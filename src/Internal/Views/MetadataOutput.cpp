#include "Internal/Views/MetadataOutput.h"

#include <utility>

#include "Internal/Views/FrameGeometry.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::capture {

MetadataOutput::MetadataOutput(std::unique_ptr<platform::BarcodeReader> theReader)
    : mainQueue(platform::current().mainQueue()), reader(std::move(theReader)) {}

MetadataOutput::~MetadataOutput() {
    waiting.clear();
}

void MetadataOutput::setAim(const std::optional<Aim>& theAim) {
    const std::lock_guard lock(aimMutex);
    aim = theAim;
}

void MetadataOutput::setActive(bool isActive) {
    active = isActive;
    if (!active) {
        waiting.clear();
    }
}

void MetadataOutput::offer(const platform::VideoFrame& frame) {
    if (frame.width > 0 && frame.height > 0 && waiting.put(frame)) {
        recognition.async([this, self = weak_from_this()] { readNewest(self); });
    }
}

void MetadataOutput::readNewest(const std::weak_ptr<MetadataOutput>& self) {
    const std::optional<platform::VideoFrame> frame = waiting.take();
    if (!frame) {
        return;
    }
    std::optional<platform::BarcodeReader::Area> area;
    {
        const std::lock_guard lock(aimMutex);
        if (aim) {
            area = areaSeenIn(aim->part, aim->view, uprightSize(*frame));
            if (!area) {
                return;
            }
        }
    }
    std::vector<platform::Barcode> codes = reader->read(*frame, area);
    if (codes.empty() || isTelling.exchange(true)) {
        return;
    }
    mainQueue.post([self, codes = std::move(codes)] {
        const std::shared_ptr<MetadataOutput> output = self.lock();
        if (!output) {
            return;
        }
        output->isTelling = false;
        if (output->active && output->handler) {
            // Of its own, for the call may set another or none.
            const Handler handle = output->handler;
            handle(codes);
        }
    });
}

} // namespace quorvane::capture
