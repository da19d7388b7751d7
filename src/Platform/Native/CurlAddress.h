#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <curl/curl.h>

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
    std::unique_ptr<CURLU, void (*)(CURLU*)> handle;
};

} // namespace quorvane::platform::native
