#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include <fcntl.h>
#include <unistd.h>

#include "Platform/Qt/GeoClueMock.h"
#include "Platform/Qt/QtPlatform.h"
#include "Platform/contract/LocationManagerContract.h"
#include "support/NMEASentences.h"
#include "support/ScratchDirectory.h"
#include "tools/PortTest.h"

namespace quorvane::platform::contract {
namespace {

/// GeoClue, whose client somebody else on the device keeps running, so that permission is known at all times.
class GeoClueRig : public LocationRig {
public:
    GeoClueRig() {
        keeper->requestAuthorization(LocationManager::Permission::always);
        keeper->startUpdatingLocation();
        GeoClueRig::settle();
    }

    LocationManagerFactory& locations() override { return platform->locationManagers(); }
    void moveTo(Coordinate coordinate) override { service.moveTo(coordinate); }
    void loseSignal() override { service.leave(); }
    void permit(bool permitted) override { service.answer(permitted ? "permit" : "off"); }
    void settle() override { service.settle(platform->mainQueue()); }

private:
    const testing::ScratchDirectory home;
    qt::GeoClueMock service;
    const std::shared_ptr<QtPlatform> platform = QtPlatform::make({{.home = home.path()}, GeoClue{}});
    const std::unique_ptr<LocationManager> keeper = platform->locationManagers().make();
};

std::unique_ptr<LocationRig> makeGeoClueRig() {
    return std::make_unique<GeoClueRig>();
}

/// The end of a line on which sentences are sent, as long as the other end is there.
class Line {
public:
    Line() = default;
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    virtual ~Line() = default;

    [[nodiscard]] virtual PositionSource source() const = 0;
    /// Once the receiver has been asked to open it. -1: not yet.
    [[nodiscard]] virtual int accept() = 0;
};

class SocketLine : public Line {
public:
    PositionSource source() const override { return NMEASocket{"127.0.0.1", server.number()}; }
    int accept() override { return accept4(server.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC); }

private:
    const tool::HeldPort server{tool::HeldPort::Use::listening};
};

class SerialLine : public Line {
public:
    PositionSource source() const override { return NMEASerialPort{ptsname(end), 9600}; }
    int accept() override { return end; }

private:
    const int end = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    const bool isUnlocked = grantpt(end) == 0 && unlockpt(end) == 0;
};

/// A receiver of NMEA sentences at the end of a line. Somebody else on the device wants its fixes all the time, and
/// hears what it tells before all others do.
template <class Wire>
class NMEARig : public LocationRig {
public:
    NMEARig() {
        keeper->setDelegate(&witness);
        keeper->startUpdatingLocation();
        platform->mainQueue().poll();
        connection = line.accept();
        EXPECT_GE(connection, 0);
    }
    ~NMEARig() override { hangUp(); }

    LocationManagerFactory& locations() override { return platform->locationManagers(); }
    void moveTo(Coordinate coordinate) override {
        const std::size_t before = witness.fixes.size();
        const std::string text =
            testing::position(++seconds * 100, minutes(coordinate.latitude, 2), minutes(coordinate.longitude, 3));
        EXPECT_EQ(write(connection, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        runUntil([&] { return witness.fixes.size() > before; });
    }
    void loseSignal() override {
        if (connection >= 0) {
            const std::size_t before = witness.told.size();
            hangUp();
            runUntil([&] { return witness.told.size() > before; });
        }
    }
    void permit(bool) override { FAIL() << "nobody is asked for permission"; }
    void settle() override {
        constexpr int longestConversation = 16;
        for (int i = 0; i < longestConversation; ++i) {
            platform->mainQueue().poll();
        }
    }

private:
    void hangUp() {
        if (connection >= 0) {
            close(std::exchange(connection, -1));
        }
    }
    void runUntil(const std::function<bool()>& done) {
        // What is waited for is no work of the queue.
        constexpr int longest = 60'000;
        for (int i = 0; i < longest && !done(); ++i) {
            platform->mainQueue().runUntil(done, std::chrono::milliseconds(1));
        }
        EXPECT_TRUE(done());
    }
    /// "4600.6000": degrees, and minutes with four digits behind the point.
    static std::string minutes(double degrees, int digits) {
        std::array<char, 24> text{};
        const auto all = static_cast<int>(std::lround(degrees * 600'000));
        std::snprintf(text.data(), text.size(), "%0*d%02d.%04d", digits, all / 600'000, all / 10'000 % 60,
                      all % 10'000);
        return text.data();
    }

    Wire line;
    const testing::ScratchDirectory home;
    LocationListener witness;
    const std::shared_ptr<QtPlatform> platform = QtPlatform::make({{.home = home.path()}, line.source()});
    const std::unique_ptr<LocationManager> keeper = platform->locationManagers().make();
    int connection = -1;
    int seconds = 0;
};

template <class Wire>
std::unique_ptr<LocationRig> makeNMEARig() {
    return std::make_unique<NMEARig<Wire>>();
}

INSTANTIATE_TEST_SUITE_P(Qt, LocationManagerContract,
                         ::testing::Values(&makeGeoClueRig, &makeNMEARig<SocketLine>, &makeNMEARig<SerialLine>));
INSTANTIATE_TEST_SUITE_P(Qt, LocationPermissionContract, ::testing::Values(&makeGeoClueRig));

} // namespace
} // namespace quorvane::platform::contract
