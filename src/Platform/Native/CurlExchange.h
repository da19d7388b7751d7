#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include <curl/curl.h>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/CurlAddress.h"
#include "Platform/Native/CurlTransport.h"

namespace quorvane::platform::native {

/// An easy handle and the request that it carries out, from its options to its result. Serves one request after the
/// other, as setting a handle up costs as much as a short exchange.
class CurlExchange {
public:
    explicit CurlExchange(const CurlOptions& theOptions);
    CurlExchange(const CurlExchange&) = delete;
    CurlExchange& operator=(const CurlExchange&) = delete;

    /// Sets the handle up. @p theRequest has been checked. False when libcurl gave no handle, or
    /// does not take the address.
    [[nodiscard]] bool begin(std::uint64_t theNumber, HTTPRequest theRequest, const CurlAddress& address);

    /// What came of it, once libcurl has ended it with @p code. Called once a request.
    [[nodiscard]] HTTPTransport::Result finish(CURLcode code);

    /// Whether it can begin another request.
    [[nodiscard]] bool servesAgain() const { return isPlain; }

    [[nodiscard]] std::uint64_t number() const { return requestNumber; }
    [[nodiscard]] CURL* handle() const { return easy.get(); }

private:
    using List = std::unique_ptr<curl_slist, void (*)(curl_slist*)>;

    void setAlways();
    void setMethod();
    void setHeaders();
    [[nodiscard]] bool setAddress(const CurlAddress& address);
    void setRoute(const CurlAddress& address);
    [[nodiscard]] TransportError error(CURLcode code) const;

    static std::size_t onHeader(char* text, std::size_t size, std::size_t count, void* self);
    static std::size_t onBody(char* text, std::size_t size, std::size_t count, void* self);

    const CurlOptions& options;
    const std::unique_ptr<CURL, void (*)(CURL*)> easy;
    std::uint64_t requestNumber = 0;
    HTTPRequest request;
    /// Whether the request is a GET without a body, which sets nothing that the next one must take back.
    bool isPlain = true;
    List headers{nullptr, &curl_slist_free_all};
    List connectTo{nullptr, &curl_slist_free_all};
    /// libcurl's address, with the target or without: as text, and taken apart.
    std::string urlSet;
    const std::unique_ptr<CURLU, void (*)(CURLU*)> urlParts{curl_url(), &curl_url_cleanup};
    /// What the route was set for.
    std::string host;
    std::uint16_t port = 0;
    std::array<char, CURL_ERROR_SIZE> message{};
    std::string body;
    std::size_t headerBytes = 0;
    /// Whether the blank line after the last header block has come: libcurl takes a block that stops before it as
    /// whole.
    bool headersAreWhole = false;
    bool isTooLarge = false;
};

} // namespace quorvane::platform::native
