#include <chrono>
#include <memory>
#include <optional>

#include "Facade/Quorvane.h"
#include "Internal/Views/Capture.h"
#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"
#include "tools/CameraFile.h"
#include "tools/Failure.h"
#include "tools/ScreenRun.h"
#include "tools/commands/ScanRun.h"

namespace quorvane::tool {
namespace {

/// How long a picture is shown to the scanner.
constexpr std::chrono::seconds lookingTime{2};
/// A stop that no success follows within this time was the user's.
constexpr std::chrono::seconds successFollows{1};

class ScannerHost final : public BarcodeScannerDelegate {
public:
    std::optional<std::string> code;
    bool hasFailed = false;
    bool isCancelled = false;

    [[nodiscard]] bool isDone() const { return code || hasFailed || isCancelled; }

    void scanningDidFail() override { hasFailed = true; }
    void scanningDidStop() override {
        platform::current().mainQueue().postAfter(successFollows, lifetime.guard([this] { isCancelled = true; }));
    }
    void scanningSucceeded(const std::string& theCode) override { code = theCode; }

private:
    platform::Lifetime lifetime;
};

} // namespace

std::string scan(const ScanOptions& options, const GlobalOptions& global, Terminal& terminal) {
    std::optional<ErrorsAside> aside;
    ScreenRun run(global, terminal, options.hasWindow);
    const auto file = options.file.empty() ? nullptr : camerasOf(options.file, {true, lookingTime});
    setErrorsAside(aside, file.get(), global);
    run.see(file);
    const auto host = std::make_shared<ScannerHost>();
    const auto scanner = Quorvane::createBarcodeScanner();
    scanner->delegate = host;
    capture::present(*scanner, false);
    run.runUntil([&] { return host->isDone(); });
    if (host->code) {
        return *host->code;
    }
    if (host->hasFailed && !file) {
        throw Failure(problemOf(nullptr));
    }
    if (file && !file->problem().empty()) {
        throw Failure(problemOf(file.get()));
    }
    throw NothingFound("no barcode was read");
}

} // namespace quorvane::tool
