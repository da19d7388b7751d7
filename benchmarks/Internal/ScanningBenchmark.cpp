#include <QQuickWindow>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <fstream>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "Facade/Quorvane.h"
#include "Internal/Views/BarcodeScanner/ZXingBarcodeReaders.h"
#include "Internal/Views/Capture.h"
#include "Platform/Qt/QtPlatform.h"
#include "benchmarks/Internal/Display.h"
#include "testing/SimulatedCamera.h"

namespace quorvane {
namespace {

using std::chrono::duration;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr nanoseconds interval = nanoseconds(std::chrono::seconds(1)) / 30;

/// The library's own readers, counted.
class CountedReaders final : public platform::BarcodeReaders {
public:
    std::unique_ptr<platform::BarcodeReader> make(const std::vector<platform::BarcodeType>& types) override {
        return std::make_unique<Reader>(readers.make(types), *this);
    }

    [[nodiscard]] int reads() {
        const std::lock_guard lock(mutex);
        return count;
    }
    void awaitReads(int wanted) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return count >= wanted; });
    }

private:
    class Reader final : public platform::BarcodeReader {
    public:
        Reader(std::unique_ptr<platform::BarcodeReader> theReader, CountedReaders& theOwner)
            : reader(std::move(theReader)), owner(theOwner) {}

        std::vector<platform::Barcode> read(const platform::VideoFrame& frame,
                                            const std::optional<Area>& aim) override {
            auto codes = reader->read(frame, aim);
            const std::lock_guard lock(owner.mutex);
            ++owner.count;
            owner.changed.notify_all();
            return codes;
        }

    private:
        const std::unique_ptr<platform::BarcodeReader> reader;
        CountedReaders& owner;
    };

    capture::ZXingBarcodeReaders readers;
    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
};

/// The real scanner over a window, with a camera that sees a full shelf without a code: the reader tries everything.
class Scanning {
public:
    Scanning() {
        platform::QtOptions options;
        options.native.home = folder.path().toStdString();
        platform = platform::QtPlatform::make(options);
        platform::install(platform);
        cameras = std::make_shared<testing::SimulatedCameras>(platform->mainQueue());
        capture::install({cameras, readers, nullptr, nullptr});
        window->resize(360, 640);
        scanner = Quorvane::createBarcodeScanner();
        capture::present(*scanner, *window, false);
        window->show();
        std::mt19937 engine(5);
        for (int i = 0; i < 4; ++i) {
            frames.push_back(shelf(engine));
        }
    }
    Scanning(const Scanning&) = delete;
    Scanning& operator=(const Scanning&) = delete;
    ~Scanning() {
        scanner = nullptr;
        window = nullptr;
        cameras = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        platform::install(nullptr);
    }

    void show(int number) { cameras->camera->show(frames[static_cast<std::size_t>(number) % frames.size()]); }

    QGuiApplication& gui = displayApplication();
    const QTemporaryDir folder;
    std::shared_ptr<platform::QtPlatform> platform;
    std::shared_ptr<testing::SimulatedCameras> cameras;
    const std::shared_ptr<CountedReaders> readers = std::make_shared<CountedReaders>();
    std::unique_ptr<QQuickWindow> window = std::make_unique<QQuickWindow>();
    std::shared_ptr<BarcodeScannerViewControllerType> scanner;
    std::vector<platform::VideoFrame> frames;

private:
    static platform::VideoFrame shelf(std::mt19937& engine) {
        constexpr int width = 1280;
        constexpr int height = 720;
        const auto pixels = std::make_shared<std::vector<std::uint8_t>>(std::size_t{width} * height, 160);
        for (int i = 0; i < 1500; ++i) {
            const int wide = 2 + static_cast<int>(engine() % 60);
            const int high = 2 + static_cast<int>(engine() % 40);
            const int left = static_cast<int>(engine() % (width - 62));
            const int top = static_cast<int>(engine() % (height - 42));
            for (int y = top; y < top + high; ++y) {
                std::fill_n(pixels->begin() + std::ptrdiff_t{y} * width + left, wide,
                            static_cast<std::uint8_t>(engine() % 256));
            }
        }
        platform::VideoFrame frame;
        frame.width = width;
        frame.height = height;
        frame.planes[0] = {pixels->data(), width};
        frame.owner = pixels;
        return frame;
    }
};

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    return 0;
}

/// Thirty frames a second for some seconds, from a thread of its own as a camera's come.
void scanAtThirtyFrames(benchmark::State& state) {
    constexpr int count = 150;
    for ([[maybe_unused]] const auto iteration : state) {
        Scanning scanning;
        std::atomic<bool> isOver = false;
        const int before = scanning.readers->reads();
        const auto begin = steady_clock::now();
        std::thread camera([&] {
            for (int i = 0; i < count; ++i) {
                std::this_thread::sleep_until(begin + i * interval);
                scanning.show(i);
            }
            isOver = true;
        });
        nanoseconds longest{0};
        auto last = steady_clock::now();
        while (!isOver) {
            // Does not wait, so that what lies between two turns is work.
            QCoreApplication::processEvents();
            const auto now = steady_clock::now();
            longest = std::max<nanoseconds>(longest, now - last);
            last = now;
            std::this_thread::sleep_for(milliseconds(1));
        }
        camera.join();
        const duration<double> seconds = steady_clock::now() - begin;
        const int read = scanning.readers->reads() - before;
        state.counters["frames delivered a second"] = count / seconds.count();
        state.counters["frames read a second"] = read / seconds.count();
        state.counters["main thread's longest turn in ms"] = duration<double, std::milli>(longest).count();
    }
}
BENCHMARK(scanAtThirtyFrames)
    ->Name("scan frames of 1280x720/thirty a second for five seconds")
    ->Iterations(1)
    ->Repetitions(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// As fast as they are read, each read and drawn.
void scanTenThousandFrames(benchmark::State& state) {
    constexpr int count = 10'000;
    constexpr int warm = 500;
    for ([[maybe_unused]] const auto iteration : state) {
        Scanning scanning;
        double atFirst = 0;
        double most = 0;
        for (int i = 0; i < count; ++i) {
            scanning.show(i);
            QCoreApplication::processEvents();
            scanning.readers->awaitReads(i + 1);
            if (i == warm) {
                atFirst = residentMegabytes();
            } else if (i > warm && i % 100 == 0) {
                most = std::max(most, residentMegabytes());
            }
        }
        state.counters["MiB after 500 frames"] = atFirst;
        state.counters["most MiB up to 10,000 frames"] = most;
    }
}
BENCHMARK(scanTenThousandFrames)
    ->Name("scan frames of 1280x720/ten thousand as fast as they are read")
    ->Iterations(1)
    ->Repetitions(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane
