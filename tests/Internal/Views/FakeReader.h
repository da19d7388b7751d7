#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "Platform/BarcodeReader.h"

namespace quorvane::capture {

/// Readers that find what the test says, and keep what they were asked. They are destroyed by the output that they read
/// for; what they saw stays here.
class FakeReaders final : public platform::BarcodeReaders {
public:
    struct Read {
        int width = 0;
        std::optional<platform::BarcodeReader::Area> aim;
        std::thread::id thread;
    };

    /// What is found in every frame.
    void find(std::vector<platform::Barcode> codes);
    /// The same, by the frame's width.
    void findBy(std::function<std::vector<platform::Barcode>(int width)> finder);
    /// Lets the readers wait inside each frame until `goOn`.
    void hold();
    void goOn();
    /// Knows no type any more.
    bool knowsNothing = false;

    [[nodiscard]] std::vector<Read> reads();
    /// Waits in real time until so many frames were begun; false after ten seconds.
    [[nodiscard]] bool waitForReads(std::size_t count);
    [[nodiscard]] const std::vector<std::vector<platform::BarcodeType>>& typesAsked() const { return asked; }

    [[nodiscard]] std::unique_ptr<platform::BarcodeReader> make(
        const std::vector<platform::BarcodeType>& types) override;

private:
    class Reader;
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        std::function<std::vector<platform::Barcode>(int width)> finder;
        bool isHeld = false;
        std::vector<Read> reads;
    };

    const std::shared_ptr<State> state = std::make_shared<State>();
    std::vector<std::vector<platform::BarcodeType>> asked;
};

/// A QR code with this text, or with none.
[[nodiscard]] platform::Barcode qrCode(std::optional<std::string> text);

} // namespace quorvane::capture
