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

    /// Where in @p url, which is this address, the target of its request begins, when that is sent as it stands there;
    /// 0 when libcurl must make it out.
    [[nodiscard]] std::size_t targetIn(const std::string& url) const;

    /// As in the address; an IPv6 address in brackets.
    std::string host;
    std::uint16_t port = 0;
    bool isEncrypted = false;
};

/// Takes addresses apart. Those of one service differ behind its name only, so what was found for the last one holds.
class CurlAddressReader {
public:
    [[nodiscard]] const CurlAddress& read(const std::string& url);

private:
    /// Scheme and authority of the last address that was valid; its path began behind them.
    std::string origin;
    CurlAddress last{""};
};

} // namespace quorvane::platform::native
