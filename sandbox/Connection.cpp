#include "sandbox/Connection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane::sandbox {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t readSize = 16384;
constexpr auto sendTime = 5s;
/// How long and how much of an unread request is taken in after the answer, so that the answer is not lost with it.
constexpr auto drainTime = 500ms;
constexpr std::size_t drainSize = std::size_t{8} << 20U;

std::chrono::milliseconds until(std::chrono::steady_clock::time_point time) {
    return std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(time - std::chrono::steady_clock::now()));
}

} // namespace

StopSignal::StopSignal() : event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (event < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

StopSignal::~StopSignal() {
    ::close(event);
}

void StopSignal::raise() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(event, &one, sizeof one);
}

bool StopSignal::sleep(std::chrono::milliseconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    pollfd wait{.fd = event, .events = POLLIN, .revents = 0};
    int result = 0;
    do {
        result = ::poll(&wait, 1, static_cast<int>(until(end).count()));
    } while (result < 0 && errno == EINTR);
    return result == 0;
}

Connection::Connection(int theSocket, const StopSignal& theStop) : socket(theSocket), stop(theStop) {
    const int on = 1;
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    ::fcntl(socket, F_SETFL, ::fcntl(socket, F_GETFL) | O_NONBLOCK);
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

Connection::~Connection() {
    end(Ending::reset);
}

Connection::Readiness Connection::waitFor(short events, std::chrono::milliseconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    std::array<pollfd, 2> waits{{{socket, events, 0}, {stop.descriptor(), POLLIN, 0}}};
    int result = 0;
    do {
        result = ::poll(waits.data(), waits.size(), static_cast<int>(until(end).count()));
    } while (result < 0 && errno == EINTR);
    if (result < 0 || waits[1].revents != 0) {
        return Readiness::stopped;
    }
    return result == 0 ? Readiness::timedOut : Readiness::ready;
}

Connection::Arrival Connection::waitForRequest(std::chrono::milliseconds time) {
    if (position < buffer.size()) {
        return Arrival::request;
    }
    const Readiness readiness = waitFor(POLLIN, time);
    if (readiness == Readiness::timedOut) {
        return Arrival::nothing;
    }
    char byte = 0;
    const bool hasByte = readiness == Readiness::ready && ::recv(socket, &byte, 1, MSG_PEEK) == 1;
    return hasByte ? Arrival::request : Arrival::ended;
}

long Connection::read(char* bytes, std::size_t size) {
    if (position == buffer.size()) {
        if (waitFor(POLLIN, until(deadline)) != Readiness::ready) {
            return -1;
        }
        buffer.resize(readSize);
        const auto count = ::recv(socket, buffer.data(), buffer.size(), 0);
        buffer.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        position = 0;
        if (count <= 0) {
            return count;
        }
    }
    const std::size_t count = std::min(size, buffer.size() - position);
    std::memcpy(bytes, buffer.data() + position, count);
    position += count;
    return static_cast<long>(count);
}

void Connection::send(std::string_view bytes) {
    const auto end = std::chrono::steady_clock::now() + sendTime;
    while (!bytes.empty()) {
        const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if ((errno != EAGAIN && errno != EINTR) || waitFor(POLLOUT, until(end)) != Readiness::ready) {
            return;
        }
    }
}

void Connection::end(Ending ending) {
    if (socket < 0) {
        return;
    }
    if (ending == Ending::reset) {
        const linger now{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    } else {
        ::shutdown(socket, SHUT_WR);
        drain();
    }
    ::close(socket);
    socket = -1;
}

void Connection::drain() {
    const auto end = std::chrono::steady_clock::now() + drainTime;
    std::array<char, readSize> unread{};
    for (std::size_t total = 0; total < drainSize;) {
        const auto count = ::recv(socket, unread.data(), unread.size(), 0);
        if (count > 0) {
            total += static_cast<std::size_t>(count);
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR) ||
                   waitFor(POLLIN, until(end)) != Readiness::ready) {
            return;
        }
    }
}

} // namespace quorvane::sandbox
