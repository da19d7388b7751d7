#include "sandbox/RawClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <strings.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace quorvane::sandbox::test {
namespace {

constexpr std::string_view blankLine = "\r\n\r\n";

int connectTo(int port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval limit{.tv_sec = 10, .tv_usec = 0};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket);
        return -1;
    }
    return socket;
}

/// The size of the first whole answer in @p bytes; 0 while it is not complete.
std::size_t answerSize(const std::string& bytes) {
    const auto end = bytes.find(blankLine);
    if (end == std::string::npos) {
        return 0;
    }
    const RawReply head{.bytes = bytes.substr(0, end + blankLine.size())};
    const std::size_t size = end + blankLine.size() + std::strtoul(head.header("Content-Length").c_str(), nullptr, 10);
    return bytes.size() >= size ? size : 0;
}

} // namespace

int RawReply::status() const {
    constexpr std::string_view version = "HTTP/1.1 ";
    return bytes.starts_with(version) ? std::atoi(bytes.c_str() + version.size()) : 0;
}

std::string RawReply::body() const {
    const auto end = bytes.find(blankLine);
    return end == std::string::npos ? "" : bytes.substr(end + blankLine.size());
}

std::string RawReply::header(std::string_view name) const {
    const std::string head = bytes.substr(0, bytes.find(blankLine)) + "\r\n";
    for (auto line = head.find("\r\n"); line != std::string::npos; line = head.find("\r\n", line + 2)) {
        const char* text = head.c_str() + line + 2;
        if (strncasecmp(text, name.data(), name.size()) == 0 && text[name.size()] == ':') {
            const std::string rest(text + name.size() + 1);
            return rest.substr(rest.find_first_not_of(' '), rest.find("\r\n") - rest.find_first_not_of(' '));
        }
    }
    return "";
}

RawConnection::RawConnection(int port) : socket(connectTo(port)) {
    if (socket < 0) {
        throw std::runtime_error("nobody listens on port " + std::to_string(port));
    }
}

RawConnection::~RawConnection() {
    ::close(socket);
}

void RawConnection::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return; // The answer tells why.
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void RawConnection::finishSending() const {
    ::shutdown(socket, SHUT_WR);
}

bool RawConnection::readMore(RawReply& reply) {
    std::array<char, 65536> buffer{};
    const auto count = ::recv(socket, buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EAGAIN) {
        throw std::runtime_error("no answer within ten seconds");
    }
    reply.wasReset = count < 0 && errno == ECONNRESET;
    if (count > 0) {
        pending.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return count > 0;
}

RawReply RawConnection::readAnswer() {
    RawReply reply;
    while (answerSize(pending) == 0 && readMore(reply)) {
    }
    const std::size_t size = answerSize(pending) == 0 ? pending.size() : answerSize(pending);
    reply.bytes = pending.substr(0, size);
    pending.erase(0, size);
    return reply;
}

RawReply RawConnection::readToEnd() {
    RawReply reply;
    while (readMore(reply)) {
    }
    reply.bytes.swap(pending);
    return reply;
}

RawReply ask(int port, std::string_view bytes) {
    RawConnection connection(port);
    connection.send(bytes);
    return connection.readAnswer();
}

bool isListening(int port) {
    const int socket = connectTo(port);
    if (socket >= 0) {
        ::close(socket);
    }
    return socket >= 0;
}

} // namespace quorvane::sandbox::test
