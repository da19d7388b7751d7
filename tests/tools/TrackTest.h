#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Core/PreferenceKeys.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "support/NMEASentences.h"
#include "tools/PortTest.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {

/// A receiver that tells one position ten times a second to whoever connects.
class ReceiverOnAPort {
public:
    explicit ReceiverOnAPort(std::string latitude = "4603.0000", std::string longitude = "01430.0000")
        : north(std::move(latitude)), east(std::move(longitude)), thread([this] { serve(); }) {}
    ReceiverOnAPort(const ReceiverOnAPort&) = delete;
    ReceiverOnAPort& operator=(const ReceiverOnAPort&) = delete;
    ~ReceiverOnAPort() {
        isOver = true;
        thread.join();
    }

    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port.number()); }

private:
    void serve() {
        int connection = -1;
        for (int hundredths = 0; !isOver; hundredths += 10) {
            pollfd next{port.socketHandle(), POLLIN, 0};
            if (poll(&next, 1, 100) == 1) {
                close(connection);
                connection = accept4(port.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC);
            }
            const std::string text = testing::position(hundredths, north, east);
            (void)send(connection, text.data(), text.size(), MSG_NOSIGNAL);
        }
        close(connection);
    }

    const HeldPort port{HeldPort::Use::listening};
    const std::string north;
    const std::string east;
    std::atomic<bool> isOver = false;
    std::thread thread;
};

/// Runs `quorvane track` against a sandbox, on a machine without a bus.
class TrackTest : public ProgramTest {
protected:
    TrackTest() { environment.emplace_back("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + (scratch / "no-bus").string()); }
    ~TrackTest() override { stopReading(); }

    /// Starts it; `told` has what it prints.
    void track(Arguments more) {
        more.insert(more.begin(), "track");
        more.insert(more.end(), {"--home", home.string()});
        if (service) {
            more.insert(more.end(), {"--data-port", std::to_string(service->dataPort()), "--identity-port",
                                     std::to_string(service->identityPort())});
        }
        const std::string pipe = scratch / ("told" + std::to_string(++pipes));
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        stopReading();
        reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        told.clear();
        running = start(more, {.output = pipe, .errors = {}, .input = {}});
    }

    /// Waits until it has printed @p text.
    [[nodiscard]] bool prints(const std::string& text) {
        constexpr int longest = 60'000;
        while (told.find(text) == std::string::npos) {
            pollfd more{reader, POLLIN, 0};
            if (poll(&more, 1, longest) != 1 || !readMore()) {
                return told.find(text) != std::string::npos;
            }
        }
        return true;
    }

    /// What the program's own preferences say.
    [[nodiscard]] std::optional<bool> isTracking() const {
        return platform::NativePlatform::make({.home = home})->preferences().boolean(preference::backgroundTracking);
    }
    /// Waits until they say so. They say false from the beginning of a refresh on.
    [[nodiscard]] bool becomes(bool tracking) const {
        constexpr int longest = 6000;
        for (int i = 0; i < longest && isTracking() != tracking; ++i) {
            ::poll(nullptr, 0, 10);
        }
        return isTracking() == tracking;
    }

    /// Sends a signal and waits for the end.
    Ended end(int signal) {
        EXPECT_EQ(kill(running.process, signal), 0);
        return wait();
    }
    Ended wait() {
        Ended ended = finish(running);
        while (readMore()) {
        }
        return ended;
    }

    void stopReading() {
        if (reader >= 0) {
            close(std::exchange(reader, -1));
        }
    }

    /// Options by which a location is asked for each second.
    [[nodiscard]] std::string eachSecond() const {
        return makeFile("each-second.json",
                        R"({"DESIRED_ACCURACY": 3, "DESIRED_MOVING_UPDATE_INTERVAL": 1,
                            "DESIRED_STOPPED_UPDATE_INTERVAL": 1, "DESIRED_SYNC_INTERVAL": 1,
                            "STOP_DISTANCE": 70, "STOP_DURATION": 2, "SYNC": 2})");
    }

    std::string told;
    Running running;

private:
    bool readMore() {
        std::array<char, 4096> piece{};
        const ssize_t size = read(reader, piece.data(), piece.size());
        told.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        return size > 0;
    }

    int reader = -1;
    int pipes = 0;
};

} // namespace quorvane::tool
