#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include <curl/curl.h>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/CurlTransport.h"

namespace quorvane::platform::native {

/// One request on an easy handle, from its options to its result.
class CurlExchange {
public:
    /// Sets @p handle up; it is the caller's, and stays in use until this ends. @p request has been checked.
    CurlExchange(std::uint64_t number, HTTPRequest request, const CurlOptions& options, CURL* handle);
    CurlExchange(const CurlExchange&) = delete;
    CurlExchange& operator=(const CurlExchange&) = delete;

    /// What came of it, once libcurl has ended it with @p code. Called once.
    [[nodiscard]] HTTPTransport::Result finish(CURLcode code);

    const std::uint64_t number;
    CURL* const handle;

private:
    using List = std::unique_ptr<curl_slist, void (*)(curl_slist*)>;

    void setMethod();
    void setHeaders();
    void setRoute(const CurlOptions& options);
    [[nodiscard]] TransportError error(CURLcode code) const;

    static std::size_t onHeader(char* text, std::size_t size, std::size_t count, void* self);
    static std::size_t onBody(char* text, std::size_t size, std::size_t count, void* self);

    const HTTPRequest request;
    List headers{nullptr, &curl_slist_free_all};
    List connectTo{nullptr, &curl_slist_free_all};
    std::array<char, CURL_ERROR_SIZE> message{};
    std::string body;
    std::size_t headerBytes = 0;
    /// Whether the blank line after the last header block has come: libcurl takes a block that stops before it as
    /// whole.
    bool headersAreWhole = false;
    bool isTooLarge = false;
};

} // namespace quorvane::platform::native
