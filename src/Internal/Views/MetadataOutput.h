#pragma once

#include <QRectF>
#include <QSizeF>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "Internal/Views/NewestFrame.h"
#include "Platform/BarcodeReader.h"
#include "Platform/SerialQueue.h"

namespace quorvane::platform {
class MainQueue;
} // namespace quorvane::platform

namespace quorvane::capture {

/// Reads barcodes in a session's frames, on a thread of its own and always in the newest frame: one that comes while
/// another is read waits, and goes when a newer one comes. Main thread only but where it says otherwise.
class MetadataOutput : public std::enable_shared_from_this<MetadataOutput> {
public:
    /// Called on the main queue with what one frame showed, if anything, as long as the output is active.
    using Handler = std::function<void(const std::vector<platform::Barcode>&)>;

    /// Where the user aims: a part of the view that the picture fills.
    struct Aim {
        QSizeF view;
        QRectF part;
    };

    /// Without a reader it is good for nothing.
    explicit MetadataOutput(std::unique_ptr<platform::BarcodeReader> theReader);

    /// Waits for the frame that is being read.
    ~MetadataOutput();
    MetadataOutput(const MetadataOutput&) = delete;
    MetadataOutput& operator=(const MetadataOutput&) = delete;

    [[nodiscard]] bool hasReader() const { return reader != nullptr; }
    void setHandler(Handler theHandler) { handler = std::move(theHandler); }
    void setAim(const std::optional<Aim>& theAim);
    void setActive(bool isActive);

    /// Any thread.
    void offer(const platform::VideoFrame& frame);

private:
    void readNewest(const std::weak_ptr<MetadataOutput>& self);

    platform::MainQueue& mainQueue;
    const std::unique_ptr<platform::BarcodeReader> reader;
    Handler handler;
    bool active = false;
    NewestFrame waiting;
    std::mutex aimMutex;
    std::optional<Aim> aim;
    /// Codes are on their way to the handler; until they are there, no others are sent.
    std::atomic<bool> isTelling = false;
    /// Goes first: its work uses the others.
    platform::SerialQueue recognition{"qv-barcode-recognition"};
};

} // namespace quorvane::capture
