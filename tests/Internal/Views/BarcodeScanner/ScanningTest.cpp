#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#define ZX_USE_UTF8 1
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include "Internal/Views/BarcodeScanner/BarcodeScannerView.h"
#include "Internal/Views/BarcodeScanner/RecordingScannerDelegate.h"
#include "Internal/Views/BarcodeScanner/ZXingBarcodeReaders.h"
#include "Internal/Views/FrameImage.h"
#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {
namespace {

/// The library's own readers, which tell how many frames they have read.
class CountedReaders final : public platform::BarcodeReaders {
public:
    std::unique_ptr<platform::BarcodeReader> make(const std::vector<platform::BarcodeType>& types) override {
        return std::make_unique<Reader>(ZXingBarcodeReaders().make(types), count);
    }

    [[nodiscard]] int reads() {
        const std::lock_guard lock(count->mutex);
        return count->reads;
    }
    /// Waits in real time; false after a minute.
    [[nodiscard]] bool waitForReads(int wanted) {
        std::unique_lock lock(count->mutex);
        return count->changed.wait_for(lock, std::chrono::minutes(1), [&] { return count->reads >= wanted; });
    }

private:
    struct Count {
        std::mutex mutex;
        std::condition_variable changed;
        int reads = 0;
    };

    class Reader final : public platform::BarcodeReader {
    public:
        Reader(std::unique_ptr<platform::BarcodeReader> theReader, std::shared_ptr<Count> theCount)
            : reader(std::move(theReader)), count(std::move(theCount)) {}

        std::vector<platform::Barcode> read(const platform::VideoFrame& frame,
                                            const std::optional<Area>& aim) override {
            auto codes = reader->read(frame, aim);
            const std::lock_guard lock(count->mutex);
            ++count->reads;
            count->changed.notify_all();
            return codes;
        }

    private:
        const std::unique_ptr<platform::BarcodeReader> reader;
        const std::shared_ptr<Count> count;
    };

    const std::shared_ptr<Count> count = std::make_shared<Count>();
};

/// A view with the library's own readers.
class ScanningTest : public ScreenTest {
protected:
    ScanningTest() {
        view->delegate = host;
        view->setup();
        view->start();
    }

    [[nodiscard]] static platform::VideoFrame codeFrame(const std::string& text) {
        const ZXing::BitMatrix bits =
            ZXing::MultiFormatWriter(ZXing::BarcodeFormat::QRCode).setMargin(10).encode(text, 320, 240);
        QImage image(320, 240, QImage::Format_RGB32);
        image.fill(Qt::white);
        for (int y = 0; y < std::min(image.height(), bits.height()); ++y) {
            for (int x = 0; x < std::min(image.width(), bits.width()); ++x) {
                image.setPixel(x, y, bits.get(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
            }
        }
        return frameOf(image);
    }

    void showAndRead(const platform::VideoFrame& frame) {
        const int before = counted->reads();
        cameras->camera->show(frame);
        EXPECT_TRUE(counted->waitForReads(before + 1));
    }

    const std::shared_ptr<CountedReaders> counted = std::make_shared<CountedReaders>();
    const std::shared_ptr<RecordingScannerDelegate> host = std::make_shared<RecordingScannerDelegate>();
    const ItemPointer<BarcodeScannerView> view{new BarcodeScannerView({cameras, counted, nullptr, sounds})};
};

TEST_F(ScanningTest, ACodeIsToldAtTheSecondFrameThatShowsIt) {
    showAndRead(testing::plainFrame(320, 240, 200));
    showAndRead(codeFrame("two frames"));
    settle();
    EXPECT_EQ(host->calls, Calls{});
    cameras->camera->show(codeFrame("two frames"));
    EXPECT_TRUE(world->runUntil([&] { return !host->calls.empty(); }));
    EXPECT_EQ(host->calls, (Calls{"succeeded two frames", "stopped"}));
    EXPECT_EQ(counted->reads(), 3);
}

TEST_F(ScanningTest, AFrameOfAnotherCodeDoesNotConfirmTheFirst) {
    showAndRead(codeFrame("one"));
    showAndRead(codeFrame("another"));
    // What the frames before gave was told before this one is begun.
    showAndRead(testing::plainFrame(320, 240, 200));
    settle();
    EXPECT_EQ(host->calls, Calls{});
}

class FrameMemoryTest : public ScreenTest {
protected:
    /// A small frame that counts itself as long as it is kept.
    platform::VideoFrame countedFrame() {
        platform::VideoFrame frame = testing::plainFrame(8, 6, 0);
        ++alive;
        frame.owner = std::shared_ptr<const void>(frame.owner.get(), [this, pixels = frame.owner](const void*) mutable {
            pixels.reset();
            --alive;
        });
        return frame;
    }

    std::atomic<int> alive = 0;
};

TEST_F(FrameMemoryTest, HoweverManyFramesComeOnlyTheNewestAreKept) {
    constexpr int many = 10'000;
    // One that is read, one that waits to be read, one that waits to be drawn, and the one that arrives.
    constexpr int kept = 4;
    {
        const ItemPointer<BarcodeScannerView> view{new BarcodeScannerView(devices())};
        view->setup();
        view->start();
        int most = 0;
        for (int i = 0; i < many; ++i) {
            cameras->camera->show(countedFrame());
            most = std::max(most, alive.load());
            if (i % 100 == 0) {
                settle();
            }
        }
        EXPECT_LE(most, kept);
        EXPECT_TRUE(readers->waitForReads(1));
        view->captureSession->stopRunning();
        settle();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(alive, 0);
}

} // namespace
} // namespace quorvane::capture
