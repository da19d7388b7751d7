#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>

#include <dlfcn.h>
#include <netdb.h>

#include "Platform/Native/TransportFixture.h"

namespace {

/// Holds the look-up of a name back until the test lets it go.
class Gate {
public:
    void pass() {
        std::unique_lock lock(mutex);
        ++waiting;
        changed.notify_all();
        changed.wait(lock, [this] { return isOpen; });
        --waiting;
        changed.notify_all();
    }

    bool isReached() {
        const std::lock_guard lock(mutex);
        return waiting > 0;
    }

    /// Returns when nobody waits any more.
    void open() {
        std::unique_lock lock(mutex);
        isOpen = true;
        changed.notify_all();
        changed.wait(lock, [this] { return waiting == 0; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    int waiting = 0;
    bool isOpen = false;
};

Gate& gate() {
    static Gate instance;
    return instance;
}

} // namespace

/// Stands in the place of the system's for every library of this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the names there are reserved ones.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
    if (name != nullptr && std::string_view(name) == "held.invalid") {
        gate().pass();
        return EAI_AGAIN;
    }
    static const auto system = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return system(name, service, hints, result);
}

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

class NativeTransportLookup : public NativeTransportTest {
protected:
    ~NativeTransportLookup() override { gate().open(); }
};

TEST_F(NativeTransportLookup, ANameThatIsStillLookedUpHoldsUpNeitherTheTimeoutNorTheEnd) {
    const Result result = exchange({.url = "http://held.invalid/", .timeout = 200ms});

    EXPECT_TRUE(gate().isReached());
    EXPECT_TRUE(failedAs(result, Kind::timedOut));
    native.reset();
    EXPECT_TRUE(gate().isReached());
}

} // namespace
} // namespace quorvane::platform
