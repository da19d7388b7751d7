#include <chrono>
#include <fstream>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Clock.h"
#include "Platform/Qt/QtLocationTest.h"
#include "support/NMEASentences.h"
#include "tools/PortTest.h"

namespace quorvane::platform::qt {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::StartsWith;

using testing::sentence;

/// At so many minutes north of 46 degrees.
std::string position(int hundredths, const std::string& minutes) {
    return testing::position(hundredths, "46" + minutes);
}

class NMEATest : public QtLocationTest {
protected:
    std::string file(const std::string& content) const {
        std::ofstream(home.path() + "/ride.nmea", std::ios::binary) << content;
        return home.path() + "/ride.nmea";
    }

    void launchFile(const std::string& content) {
        launch(NMEAFile{file(content), [this] { ++ends; }});
    }

    bool runUntilEnd() {
        return runUntil([this] { return ends > 0; });
    }

    int ends = 0;
};

TEST_F(NMEATest, PermissionIsAlwaysGiven) {
    launchFile("");

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
}

TEST_F(NMEATest, ARecordingGivesItsFixesWithTheTimeOfTheClockAndFiveMetresForEachUnitOfDilution) {
    launchFile(position(0, "03.0000") + position(10, "03.6000"));
    const Date before = platform->clock().now();

    manager->startUpdatingLocation();
    ASSERT_TRUE(runUntilFixes(2));

    EXPECT_NEAR(listener.fixes[0].coordinate.latitude, 46.05, 1e-9);
    EXPECT_NEAR(listener.fixes[0].coordinate.longitude, 14.5, 1e-9);
    EXPECT_DOUBLE_EQ(listener.fixes[0].horizontalAccuracy, 6.0);
    EXPECT_EQ(listener.fixes[0].verticalAccuracy, -1);
    EXPECT_GE(listener.fixes[0].timestamp, before);
    EXPECT_LE(listener.fixes[1].timestamp, platform->clock().now());
    EXPECT_NEAR(listener.fixes[1].coordinate.latitude, 46.06, 1e-9);
    EXPECT_EQ(manager->location(), listener.fixes[1]);
}

TEST_F(NMEATest, ARecordingKeepsItsOwnPace) {
    launchFile(position(0, "03.0000") + position(30, "03.1000") + position(80, "03.2000"));
    const auto before = std::chrono::steady_clock::now();
    manager->startUpdatingLocation();

    ASSERT_TRUE(runUntilFixes(3));

    // The toolkit's timers may be early by a twentieth.
    EXPECT_GE(std::chrono::steady_clock::now() - before, 700ms);
}

TEST_F(NMEATest, TimesThatGoBackCostNoTime) {
    launchFile(position(5000, "03.0000") + position(0, "03.1000") + position(10, "03.2000"));
    manager->startUpdatingLocation();

    EXPECT_TRUE(runUntilFixes(2));
}

TEST_F(NMEATest, MidnightIsPassedInARecording) {
    const auto at = [](const char* time, const char* date) {
        return sentence(std::string("GPRMC,") + time + ",A,4603.0000,N,01430.0000,E,10.0,90.0," + date + ",,,A");
    };
    launchFile(at("235959.90", "210326") + at("000000.00", "220326"));
    manager->startUpdatingLocation();

    EXPECT_TRUE(runUntilFixes(2));
}

TEST_F(NMEATest, AFixOfWhichNoDilutionIsToldIsTenMetresAccurate) {
    launchFile(sentence("GPRMC,120000.00,A,4603.0000,N,01430.0000,E,10.0,90.0,210326,,,A"));
    manager->requestLocation();

    ASSERT_TRUE(runUntilFixes(1));

    EXPECT_EQ(listener.fixes[0].horizontalAccuracy, 10);
}

TEST_F(NMEATest, SentencesWithoutADateAreOfToday) {
    launchFile(sentence("GPGGA,120000.00,4603.0000,N,01430.0000,E,1,08,1.2,300.0,M,45.0,M,,"));
    manager->requestLocation();

    EXPECT_TRUE(runUntilFixes(1));
}

TEST_F(NMEATest, TheEndOfARecordingIsToldOnceAndFailsWhoWantsAFixThenAndLater) {
    launchFile(position(0, "03.0000"));
    manager->startUpdatingLocation();

    ASSERT_TRUE(runUntilEnd());
    ASSERT_TRUE(runUntilFailure());
    EXPECT_EQ(listener.fixes.size(), 1U);
    EXPECT_THAT(listener.failures, ElementsAre("the NMEA file " + home.path() + "/ride.nmea is at its end"));

    manager->stopUpdatingLocation();
    manager->requestLocation();
    EXPECT_TRUE(runUntil([this] { return listener.failures.size() == 2; }));
    EXPECT_EQ(ends, 1);
}

TEST_F(NMEATest, ARecordingGoesOnWhileNobodyWantsAFix) {
    launchFile(position(0, "03.0000") + position(10, "03.6000"));
    manager->requestLocation();
    ASSERT_TRUE(runUntilFixes(1));

    EXPECT_TRUE(runUntilEnd());

    EXPECT_EQ(listener.fixes.size(), 1U);
    EXPECT_NEAR(manager->location()->coordinate.latitude, 46.05, 1e-9);
}

TEST_F(NMEATest, AFileThatIsNoRecordingSaysSo) {
    launchFile("a diary\nof a ride\n$GPGGA,not a time*00\n");
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures, ElementsAre("the NMEA file " + home.path() + "/ride.nmea tells no position"));
    EXPECT_EQ(ends, 1);
}

TEST_F(NMEATest, AFileThatIsNotThereSaysSo) {
    launch(NMEAFile{home.path() + "/none.nmea", [this] { ++ends; }});
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures,
                ElementsAre("the NMEA file " + home.path() + "/none.nmea gives nothing: No such file or directory"));
    EXPECT_EQ(ends, 1);
}

TEST_F(NMEATest, ALongFileWithoutALinesEndComesToItsEnd) {
    launchFile(std::string(200'000, 'x'));
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures, ElementsAre("the NMEA file " + home.path() + "/ride.nmea tells no position"));
    EXPECT_EQ(ends, 1);
}

TEST_F(NMEATest, TheLastSentenceNeedsNoLinesEnd) {
    std::string content = position(0, "03.0000");
    while (content.ends_with('\n') || content.ends_with('\r')) {
        content.pop_back();
    }
    launchFile(content);
    manager->requestLocation();

    ASSERT_TRUE(runUntilFixes(1));
    EXPECT_NEAR(listener.fixes[0].coordinate.latitude, 46.05, 1e-9);
}

TEST_F(NMEATest, APipeIsNoRecordingAndHoldsNothingUp) {
    const std::string pipe = home.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    launch(NMEAFile{pipe, [this] { ++ends; }});
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures, ElementsAre("the NMEA file " + pipe + " gives nothing: It is no regular file"));
    EXPECT_EQ(ends, 1);
}

TEST_F(NMEATest, RegionsAreCrossedAlongARecording) {
    launchFile(position(0, "03.0000") + position(10, "03.1000") + position(20, "03.2000") + position(30, "03.3000"));
    manager->startMonitoring({"start", {46.05, 14.5}, 250});

    ASSERT_TRUE(runUntil([this] { return !listener.told.empty() && listener.told.back() == "exit start"; }));

    EXPECT_THAT(listener.told, ElementsAre("monitors start", "inside start", "exit start"));
}

TEST_F(NMEATest, ARegionAndItsSideOutliveTheLaunch) {
    launchFile(position(0, "03.0000"));
    manager->startMonitoring({"start", {46.05, 14.5}, 250});
    ASSERT_TRUE(runUntil([this] { return listener.told.size() == 2; }));
    listener.told.clear();

    launchFile(position(0, "05.0000") + position(10, "05.0000"));
    ASSERT_EQ(manager->monitoredRegions().size(), 1U);
    EXPECT_EQ(manager->monitoredRegions()[0], (CircularRegion{"start", {46.05, 14.5}, 250}));
    manager->startMonitoringVisits();

    EXPECT_TRUE(runUntil([this] { return !listener.told.empty(); }));
    EXPECT_THAT(listener.told, ElementsAre("exit start"));
}

class NMEASocketTest : public NMEATest {
protected:
    static void send(int handle, const std::string& text) {
        EXPECT_EQ(write(handle, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    const tool::HeldPort server{tool::HeldPort::Use::listening};
};

TEST_F(NMEASocketTest, AServersSentencesAreFixes) {
    launch(NMEASocket{"127.0.0.1", server.number()});
    manager->startUpdatingLocation();
    platform->mainQueue().poll();
    const int connection = accept4(server.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC);
    ASSERT_GE(connection, 0);

    send(connection, position(0, "03.0000"));
    EXPECT_TRUE(runUntilFixes(1));
    send(connection, position(100, "03.6000"));
    EXPECT_TRUE(runUntilFixes(2));

    EXPECT_NEAR(listener.fixes[1].coordinate.latitude, 46.06, 1e-9);
    close(connection);
}

TEST_F(NMEASocketTest, AServerThatClosesIsToldAndTriedAgain) {
    launch(NMEASocket{"127.0.0.1", server.number()});
    manager->startUpdatingLocation();
    platform->mainQueue().poll();
    close(accept4(server.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC));
    ASSERT_TRUE(runUntilFailure());
    EXPECT_THAT(listener.failures.back(), StartsWith("the NMEA server 127.0.0.1:"));

    manager->requestLocation();
    platform->mainQueue().poll();
    const int again = accept4(server.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC);
    send(again, position(0, "03.0000"));

    EXPECT_TRUE(runUntilFixes(1));
    close(again);
}

TEST_F(NMEASocketTest, AServerThatRefusesSaysSo) {
    const tool::HeldPort deaf(tool::HeldPort::Use::deaf);
    launch(NMEASocket{"127.0.0.1", deaf.number()});
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures, ElementsAre("the NMEA server 127.0.0.1:" + std::to_string(deaf.number()) +
                                               " gives nothing: Connection refused"));
}

/// The socket of this process that is connected to @p port; -1: none.
int connectionTo(std::uint16_t port) {
    for (int handle = 0; handle < static_cast<int>(sysconf(_SC_OPEN_MAX)) && handle < 4096; ++handle) {
        sockaddr_in other{};
        socklen_t size = sizeof other;
        const bool isConnected = getpeername(handle, reinterpret_cast<sockaddr*>(&other), &size) == 0;
        if (isConnected && other.sin_family == AF_INET && ntohs(other.sin_port) == port) {
            return handle;
        }
    }
    return -1;
}

int optionOf(int handle, int level, int name) {
    int value = -1;
    socklen_t size = sizeof value;
    EXPECT_EQ(getsockopt(handle, level, name, &value, &size), 0);
    return value;
}

TEST_F(NMEASocketTest, AServerThatIsGoneWithoutAWordIsFoundOutWithinAMinute) {
    launch(NMEASocket{"127.0.0.1", server.number()});
    manager->startUpdatingLocation();
    platform->mainQueue().poll();
    const int connection = accept4(server.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC);
    send(connection, position(0, "03.0000"));
    ASSERT_TRUE(runUntilFixes(1));

    const int own = connectionTo(server.number());

    ASSERT_GE(own, 0);
    EXPECT_EQ(optionOf(own, SOL_SOCKET, SO_KEEPALIVE), 1);
    EXPECT_LE(optionOf(own, IPPROTO_TCP, TCP_KEEPIDLE) +
                  optionOf(own, IPPROTO_TCP, TCP_KEEPINTVL) * optionOf(own, IPPROTO_TCP, TCP_KEEPCNT),
              60);
    close(connection);
}

class NMEASerialTest : public NMEATest {
protected:
    /// The other end of a line, as a receiver would be.
    static int plugIn() {
        const int end = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_TRUE(grantpt(end) == 0 && unlockpt(end) == 0);
        return end;
    }

    int receiver = plugIn();
    const std::string port = ptsname(receiver);

    ~NMEASerialTest() override { close(receiver); }
};

TEST_F(NMEASerialTest, APortsSentencesAreFixes) {
    launch(NMEASerialPort{port, 9600});
    manager->startUpdatingLocation();
    platform->mainQueue().poll();
    const std::string text = position(0, "03.0000");

    EXPECT_EQ(write(receiver, text.data(), text.size()), static_cast<ssize_t>(text.size()));

    EXPECT_TRUE(runUntilFixes(1));
}

TEST_F(NMEASerialTest, AReceiverThatIsPulledOutIsToldAndTriedAgain) {
    const std::string name = home.path() + "/receiver";
    ASSERT_EQ(symlink(port.c_str(), name.c_str()), 0);
    launch(NMEASerialPort{name, 9600});
    manager->startUpdatingLocation();
    platform->mainQueue().poll();

    close(receiver);
    ASSERT_TRUE(runUntilFailure());
    EXPECT_THAT(listener.failures, ElementsAre("the serial port " + name + " gives nothing: The other end is gone"));

    receiver = plugIn();
    ASSERT_EQ(unlink(name.c_str()), 0);
    ASSERT_EQ(symlink(ptsname(receiver), name.c_str()), 0);
    manager->requestLocation();
    platform->mainQueue().poll();
    const std::string text = position(0, "03.0000");
    EXPECT_EQ(write(receiver, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    EXPECT_TRUE(runUntilFixes(1));
}

TEST_F(NMEASerialTest, ASpeedThatIsNoneSaysSo) {
    launch(NMEASerialPort{port, 4711});
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures,
                ElementsAre("the serial port " + port + " gives nothing: It does not take 4711 baud"));
}

TEST_F(NMEASerialTest, AFileThatIsNoPortSaysSo) {
    launch(NMEASerialPort{file("text")});
    manager->requestLocation();

    ASSERT_TRUE(runUntilFailure());

    EXPECT_THAT(listener.failures,
                ElementsAre("the serial port " + home.path() + "/ride.nmea gives nothing: It is no serial port"));
}

} // namespace
} // namespace quorvane::platform::qt
