#pragma once

#include <cstdint>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane::tool {

/// A port of the loopback interface that is held for as long as this lives.
class HeldPort {
public:
    enum class Use { listening, deaf };

    /// A deaf one refuses every connection.
    explicit HeldPort(Use use) : handle(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(handle, generic, size) == 0 && getsockname(handle, generic, &size) == 0) {
            port = ntohs(address.sin_port);
        }
        if (use == Use::listening && listen(handle, 16) != 0) {
            port = 0;
        }
    }
    HeldPort(const HeldPort&) = delete;
    HeldPort& operator=(const HeldPort&) = delete;
    ~HeldPort() { close(handle); }

    /// 0 when there is none.
    [[nodiscard]] std::uint16_t number() const { return port; }
    [[nodiscard]] int socketHandle() const { return handle; }

private:
    int handle;
    std::uint16_t port = 0;
};

} // namespace quorvane::tool
