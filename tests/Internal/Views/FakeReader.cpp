#include "Internal/Views/FakeReader.h"

#include <chrono>
#include <utility>

namespace quorvane::capture {

using platform::Barcode;

class FakeReaders::Reader final : public platform::BarcodeReader {
public:
    explicit Reader(std::shared_ptr<State> theState) : state(std::move(theState)) {}

    std::vector<Barcode> read(const platform::VideoFrame& frame, const std::optional<Area>& aim) override {
        std::unique_lock lock(state->mutex);
        state->reads.push_back({frame.width, aim, std::this_thread::get_id()});
        state->changed.notify_all();
        state->changed.wait(lock, [this] { return !state->isHeld; });
        return state->finder ? state->finder(frame.width) : std::vector<Barcode>();
    }

private:
    const std::shared_ptr<State> state;
};

void FakeReaders::find(std::vector<Barcode> codes) {
    findBy([codes = std::move(codes)](int) { return codes; });
}

void FakeReaders::findBy(std::function<std::vector<Barcode>(int)> finder) {
    const std::lock_guard lock(state->mutex);
    state->finder = std::move(finder);
}

void FakeReaders::hold() {
    const std::lock_guard lock(state->mutex);
    state->isHeld = true;
}

void FakeReaders::goOn() {
    const std::lock_guard lock(state->mutex);
    state->isHeld = false;
    state->changed.notify_all();
}

std::vector<FakeReaders::Read> FakeReaders::reads() {
    const std::lock_guard lock(state->mutex);
    return state->reads;
}

bool FakeReaders::waitForReads(std::size_t count) {
    std::unique_lock lock(state->mutex);
    return state->changed.wait_for(lock, std::chrono::seconds(10), [&] { return state->reads.size() >= count; });
}

std::unique_ptr<platform::BarcodeReader> FakeReaders::make(const std::vector<platform::BarcodeType>& types) {
    asked.push_back(types);
    return knowsNothing ? nullptr : std::make_unique<Reader>(state);
}

Barcode qrCode(std::optional<std::string> text) {
    return {platform::BarcodeType::qr, std::move(text)};
}

} // namespace quorvane::capture
