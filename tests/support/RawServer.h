#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane::testing {

/// What a `RawServer` does once it has read a request.
struct RawAnswer {
    enum class Then {
        /// Waits for the next request on the same connection.
        keepsOpen,
        closes,
        /// Closes with a reset instead of an orderly end.
        resets,
        /// Answers nothing more, and waits until the client closes the connection.
        hangs,
    };
    /// Sent as they are; the status line and everything after it.
    std::string bytes;
    Then then = Then::keepsOpen;
    /// Before the first byte.
    std::chrono::milliseconds delay{0};
    /// After each byte but the last; 0 sends them all at once.
    std::chrono::milliseconds pauseAfterByte{0};
};

/// An HTTP server on a free port of 127.0.0.1 that sends literal bytes and keeps what it reads. A request ends with
/// its blank line, or as many bytes later as its Content-Length says. Safe from any thread.
class RawServer {
public:
    /// Answers each request (given whole) with what @p theScript says. It is called one request at a time.
    using Script = std::function<RawAnswer(const std::string& request)>;

    explicit RawServer(Script theScript) : script(std::move(theScript)) { start(); }

    /// The n-th request gets the n-th answer, and the last answer repeats.
    explicit RawServer(std::vector<RawAnswer> answers)
        : RawServer([answers = std::move(answers), next = std::size_t{0}](const std::string&) mutable {
              return answers.at(std::min(next++, answers.size() - 1));
          }) {}

    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    ~RawServer() {
        {
            const std::lock_guard lock(mutex);
            stopping = true;
            for (const int connection : open) {
                shutdown(connection, SHUT_RDWR);
            }
        }
        changed.notify_all();
        // Wakes every thread: their sockets have something to read from now on.
        const char byte = 0;
        static_cast<void>(!write(stopPipe[1], &byte, 1));
        acceptor.join();
        for (std::thread& connection : threads) {
            connection.join();
        }
        for (const int file : {listener, stopPipe[0], stopPipe[1]}) {
            close(file);
        }
    }

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    [[nodiscard]] std::string url(const std::string& target = "/") const {
        return "http://127.0.0.1:" + std::to_string(boundPort) + target;
    }

    /// The bytes of each request, in the order of arrival.
    [[nodiscard]] std::vector<std::string> requests() const {
        const std::lock_guard lock(mutex);
        return received;
    }

    /// How many connections were accepted so far.
    [[nodiscard]] std::size_t connections() const {
        const std::lock_guard lock(mutex);
        return accepted;
    }

    /// Waits until no client holds a connection any more; false when that takes longer than 20 seconds.
    bool waitUntilAllAreClosed() const {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), [this] { return open.empty(); });
    }

    /// Waits until @p count requests have arrived; false when that takes longer than 20 seconds.
    bool waitForRequests(std::size_t count) const {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), [&] { return received.size() >= count; });
    }

    /// A whole answer with a Content-Length.
    static std::string answer(int status, const std::string& body,
                              const std::vector<std::pair<std::string, std::string>>& headers = {}) {
        std::string bytes = "HTTP/1.1 " + std::to_string(status) + " Said So\r\n";
        for (const auto& [name, value] : headers) {
            bytes.append(name).append(": ").append(value).append("\r\n");
        }
        if (status != 204 && status != 304) {
            bytes += "Content-Length: " + std::to_string(body.size()) + "\r\n";
        }
        return bytes + "\r\n" + body;
    }

private:
    void start() {
        listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (listener < 0 || pipe(stopPipe) != 0 || bind(listener, generic, length) != 0 || listen(listener, 64) != 0 ||
            getsockname(listener, generic, &length) != 0) {
            std::abort();
        }
        boundPort = ntohs(address.sin_port);
        acceptor = std::thread([this] { acceptAll(); });
    }

    /// Waits until @p file can be read; false once the server stops.
    bool waitFor(int file) const {
        pollfd files[] = {{file, POLLIN, 0}, {stopPipe[0], POLLIN, 0}};
        poll(files, 2, -1);
        return (files[1].revents & POLLIN) == 0;
    }

    void acceptAll() {
        while (waitFor(listener)) {
            const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            if (connection < 0) {
                continue;
            }
            const std::lock_guard lock(mutex);
            ++accepted;
            open.insert(connection);
            threads.emplace_back([this, connection] { serve(connection); });
        }
    }

    void serve(int connection) {
        std::string buffer;
        RawAnswer answer;
        while (readRequest(connection, buffer, answer) && sendAnswer(connection, answer)) {
        }
        const std::lock_guard lock(mutex);
        close(connection);
        open.erase(connection);
        changed.notify_all();
    }

    /// Takes the next request from the connection and asks for its answer. False at the end of the connection.
    bool readRequest(int connection, std::string& buffer, RawAnswer& answer) {
        std::size_t whole = wholeRequest(buffer);
        while (whole == 0) {
            char bytes[65536];
            const ssize_t got = waitFor(connection) ? recv(connection, bytes, sizeof bytes, 0) : 0;
            if (got <= 0) {
                return false;
            }
            buffer.append(bytes, static_cast<std::size_t>(got));
            whole = wholeRequest(buffer);
        }
        const std::lock_guard lock(mutex);
        received.push_back(buffer.substr(0, whole));
        buffer.erase(0, whole);
        answer = script(received.back());
        changed.notify_all();
        return true;
    }

    /// How many bytes the first request in @p buffer has; 0 when it is not whole.
    static std::size_t wholeRequest(const std::string& buffer) {
        const std::size_t end = buffer.find("\r\n\r\n");
        if (end == std::string::npos) {
            return 0;
        }
        constexpr std::string_view name = "\r\ncontent-length:";
        std::string head = buffer.substr(0, end);
        std::transform(head.begin(), head.end(), head.begin(),
                       [](char one) { return one >= 'A' && one <= 'Z' ? static_cast<char>(one + 32) : one; });
        const std::size_t found = head.find(name);
        const std::size_t length =
            found == std::string::npos ? 0 : std::strtoul(head.c_str() + found + name.size(), nullptr, 10);
        return buffer.size() < end + 4 + length ? 0 : end + 4 + length;
    }

    /// False when the connection is to end.
    bool sendAnswer(int connection, const RawAnswer& answer) {
        if (!pause(answer.delay) || !send(connection, answer)) {
            return false;
        }
        if (answer.then == RawAnswer::Then::hangs) {
            char ignored[4096];
            while (waitFor(connection) && recv(connection, ignored, sizeof ignored, 0) > 0) {
            }
        } else if (answer.then == RawAnswer::Then::resets) {
            const linger atOnce{1, 0};
            setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        }
        return answer.then == RawAnswer::Then::keepsOpen;
    }

    bool send(int connection, const RawAnswer& answer) {
        const bool slowly = answer.pauseAfterByte.count() > 0;
        for (std::string_view rest = answer.bytes; !rest.empty();) {
            const ssize_t sent = ::send(connection, rest.data(), slowly ? 1 : rest.size(), MSG_NOSIGNAL);
            if (sent <= 0) {
                return false;
            }
            rest.remove_prefix(static_cast<std::size_t>(sent));
            if (!rest.empty() && !pause(answer.pauseAfterByte)) {
                return false;
            }
        }
        return true;
    }

    /// False once the server stops.
    bool pause(std::chrono::milliseconds time) const {
        std::unique_lock lock(mutex);
        return !changed.wait_for(lock, time, [this] { return stopping; });
    }

    Script script;
    int listener = -1;
    int stopPipe[2] = {-1, -1};
    std::uint16_t boundPort = 0;
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::vector<std::string> received;
    std::size_t accepted = 0;
    std::set<int> open;
    bool stopping = false;
    std::vector<std::thread> threads;
    std::thread acceptor;
};

} // namespace quorvane::testing
