#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvane::platform::native {

/// An absolute http or https address, taken apart.
class CurlAddress {
public:
    explicit CurlAddress(const std::string& url);

    [[nodiscard]] bool isValid() const { return port != 0; }
    /// "localhost" or one below it, 127.0.0.0/8, [::1].
    [[nodiscard]] bool isLoopback() const;

    /// As in the address; an IPv6 address in brackets.
    std::string host;
    std::uint16_t port = 0;
    bool isEncrypted = false;
    /// Where the target of a request begins in the address, when it is sent as it stands there; 0 when libcurl must
    /// make it out.
    std::size_t target = 0;
};

/// Takes addresses apart. Those of one service differ behind its name only, so what was found for the last one holds.
class CurlAddressReader {
public:
    [[nodiscard]] const CurlAddress& read(const std::string& url);

private:
    /// Scheme and authority of the last address that was valid; its path began behind them.
    std::string origin;
    bool hasNoPlainProxy = false;
    CurlAddress last{""};
};

} // namespace quorvane::platform::native
