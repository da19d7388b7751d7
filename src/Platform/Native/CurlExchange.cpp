#include "Platform/Native/CurlExchange.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace quorvane::platform::native {
namespace {

/// What a body is followed by in memory, so that a parser may read beyond its end.
constexpr std::size_t spareBytes = 64;
/// No answer of ours has headers near this size; a server that sends them without end must not fill the memory.
constexpr std::size_t maxHeaderBytes = std::size_t{256} * 1024;

template <class Value>
void set(CURL* handle, CURLoption option, Value value) {
    curl_easy_setopt(handle, option, value);
}

template <class Value>
Value info(CURL* handle, CURLINFO which) {
    Value value{};
    curl_easy_getinfo(handle, which, &value);
    return value;
}

std::size_t bytes(curl_off_t count) {
    return static_cast<std::size_t>(std::max<curl_off_t>(count, 0));
}

TransportError::Kind kindOf(CURLcode code) {
    switch (code) {
        case CURLE_URL_MALFORMAT:
            return TransportError::Kind::invalidRequest;
        case CURLE_OPERATION_TIMEDOUT:
            return TransportError::Kind::timedOut;
        case CURLE_OK:
        case CURLE_GOT_NOTHING:
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
        // The peer speaks something else than HTTP.
        case CURLE_UNSUPPORTED_PROTOCOL:
        case CURLE_WEIRD_SERVER_REPLY:
            return TransportError::Kind::truncated;
        default:
            return TransportError::Kind::connection;
    }
}

} // namespace

CurlExchange::CurlExchange(const CurlOptions& theOptions)
    : options(theOptions), easy(curl_easy_init(), &curl_easy_cleanup) {
    if (easy) {
        setAlways();
    }
}

void CurlExchange::setAlways() {
    set(handle(), CURLOPT_PRIVATE, this);
    set(handle(), CURLOPT_ERRORBUFFER, message.data());
    set(handle(), CURLOPT_NOSIGNAL, 1L);
    set(handle(), CURLOPT_PROTOCOLS_STR, "http,https");
    set(handle(), CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(handle(), CURLOPT_FOLLOWLOCATION, 0L);
    set(handle(), CURLOPT_PATH_AS_IS, 1L);
    set(handle(), CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(HTTPTransport::maxBodyBytes));
    // A name that is still being looked up must hold up neither a timeout nor the end of the transport.
    set(handle(), CURLOPT_QUICK_EXIT, 1L);
    set(handle(), CURLOPT_SSL_VERIFYPEER, 1L);
    set(handle(), CURLOPT_SSL_VERIFYHOST, 2L);
    set(handle(), CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    set(handle(), CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(handle(), CURLOPT_HEADERFUNCTION, &CurlExchange::onHeader);
    set(handle(), CURLOPT_HEADERDATA, this);
    set(handle(), CURLOPT_WRITEFUNCTION, &CurlExchange::onBody);
    set(handle(), CURLOPT_WRITEDATA, this);
    if (!options.certificateFile.empty()) {
        set(handle(), CURLOPT_CAINFO, options.certificateFile.c_str());
    }
}

bool CurlExchange::begin(std::uint64_t theNumber, HTTPRequest theRequest, const CurlAddress& address) {
    if (!easy || !urlParts) {
        return false;
    }
    requestNumber = theNumber;
    isPlain = theRequest.method == "GET" && theRequest.body.empty();
    const bool hasSameHeaders = isPlain && headers && theRequest.headers == request.headers;
    request = std::move(theRequest);
    message.front() = '\0';
    body.clear();
    headerBytes = 0;
    headersAreWhole = false;
    isTooLarge = false;

    if (!isPlain) {
        setMethod();
    }
    if (!hasSameHeaders) {
        setHeaders();
    }
    if (address.host != host || address.port != port) {
        setRoute(address);
    }
    if (!setAddress(address)) {
        return false;
    }
    set(handle(), CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<std::int64_t>(request.timeout.count(), 1)));
    return true;
}

void CurlExchange::setMethod() {
    const bool isGet = request.method == "GET";
    const bool hasBody = !request.body.empty() || request.method == "POST" || request.method == "PUT";
    if (hasBody) {
        set(handle(), CURLOPT_POST, 1L);
        set(handle(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
        set(handle(), CURLOPT_POSTFIELDS, request.body.data());
    }
    if (request.method != (hasBody ? "POST" : "GET")) {
        set(handle(), CURLOPT_CUSTOMREQUEST, request.method.c_str());
    }
    if (!isGet) {
        // On a connection that was used before, libcurl sends a request again when it finds the connection dead.
        set(handle(), CURLOPT_FRESH_CONNECT, 1L);
    }
}

void CurlExchange::setHeaders() {
    const auto add = [this](const std::string& line) {
        if (curl_slist* const longer = curl_slist_append(headers.get(), line.c_str())) {
            static_cast<void>(headers.release());
            headers.reset(longer);
        }
    };
    // "Name:" takes a header of libcurl's own away, "Name;" sends an empty one.
    headers.reset();
    std::vector<std::string> own = {"Accept:", "Accept-Encoding: identity"};
    if (!isPlain) {
        own.insert(own.begin() + 1, {"Content-Type:", "Expect:"});
    }
    for (const auto& [name, value] : request.headers) {
        const bool isBlank = value.find_first_not_of(" \t") == std::string::npos;
        add(name + (isBlank ? ";" : ": " + value));
        std::erase_if(own, [&length = name](const std::string& line) {
            return curl_strnequal(line.c_str(), length.c_str(), length.size()) != 0 && line[length.size()] == ':';
        });
    }
    for (const std::string& line : own) {
        add(line);
    }
    set(handle(), CURLOPT_HTTPHEADER, headers.get());
}

bool CurlExchange::setAddress(const CurlAddress& address) {
    // Given a text, libcurl would take it apart and put it together for each request, and write its query byte by byte.
    const std::size_t target = address.target;
    const std::string_view where(request.url.data(), target == 0 ? request.url.size() : target + 1);
    if (where != urlSet) {
        urlSet = where;
        if (curl_url_set(urlParts.get(), CURLUPART_URL, urlSet.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
            // The parts are those of the address before.
            urlSet.clear();
            return false;
        }
        set(handle(), CURLOPT_CURLU, urlParts.get());
    }
    set(handle(), CURLOPT_REQUEST_TARGET,
        target == 0 ? static_cast<const char*>(nullptr) : request.url.c_str() + target);
    return true;
}

void CurlExchange::setRoute(const CurlAddress& address) {
    host = address.host;
    port = address.port;
    connectTo.reset();
    // None: what the environment says.
    set(handle(), CURLOPT_NOPROXY, static_cast<const char*>(address.isLoopback() ? "*" : nullptr));
    for (const LoopbackPort& one : options.connectTo) {
        if (address.isLoopback() && one.from == port) {
            const std::string route = host + ":" + std::to_string(one.from) + ":127.0.0.1:" + std::to_string(one.to);
            connectTo.reset(curl_slist_append(nullptr, route.c_str()));
            break;
        }
    }
    set(handle(), CURLOPT_CONNECT_TO, connectTo.get());
}

std::size_t CurlExchange::onHeader(char* text, std::size_t size, std::size_t count, void* self) {
    auto& exchange = *static_cast<CurlExchange*>(self);
    const std::string_view line(text, size * count);
    exchange.headerBytes += line.size();
    if (exchange.headerBytes > maxHeaderBytes) {
        exchange.isTooLarge = true;
        return 0;
    }
    if (line.starts_with("HTTP/")) {
        exchange.headersAreWhole = false;
    } else if (line == "\r\n" || line == "\n") {
        exchange.headersAreWhole = true;
    }
    return line.size();
}

std::size_t CurlExchange::onBody(char* text, std::size_t size, std::size_t count, void* self) {
    auto& exchange = *static_cast<CurlExchange*>(self);
    std::string& body = exchange.body;
    const std::size_t length = size * count;
    if (body.size() + length > HTTPTransport::maxBodyBytes) {
        exchange.isTooLarge = true;
        return 0;
    }
    try {
        if (body.empty()) {
            const auto announced = info<curl_off_t>(exchange.handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T);
            body.reserve(std::clamp(bytes(announced), length, std::size_t{1} << 20U) + spareBytes);
        }
        body.append(text, length);
    } catch (const std::exception&) {
        exchange.isTooLarge = true;
        return 0;
    }
    return length;
}

HTTPTransport::Result CurlExchange::finish(CURLcode code) {
    const long status = info<long>(handle(), CURLINFO_RESPONSE_CODE);
    // An interim answer (1xx) is followed by the real one, unless the connection ends before.
    if (code != CURLE_OK || !headersAreWhole || status < 101 || (status > 101 && status < 200)) {
        return error(code);
    }
    if (body.capacity() < body.size() + spareBytes) {
        body.reserve(body.size() + spareBytes);
    }
    HTTPResponse response;
    response.status = static_cast<int>(status);
    response.body = std::move(body);
    return response;
}

TransportError CurlExchange::error(CURLcode code) const {
    TransportError result;
    // An endless line of a header is libcurl's only reason to run out of memory that occurs.
    if (isTooLarge || code == CURLE_FILESIZE_EXCEEDED || code == CURLE_OUT_OF_MEMORY) {
        result.kind = TransportError::Kind::tooLarge;
        result.message = "The answer is larger than 64 MiB, or its headers are larger than 256 KiB.";
        return result;
    }
    const long tunnel = info<long>(handle(), CURLINFO_HTTP_CONNECTCODE);
    result.kind = tunnel != 0 && tunnel != 200 ? TransportError::Kind::connection : kindOf(code);
    if (code == CURLE_OK) {
        result.message = "The connection ended before the answer's headers did";
    } else {
        result.message = message.front() != '\0' ? message.data() : curl_easy_strerror(code);
    }
    std::replace_if(
        result.message.begin(), result.message.end(), [](char one) { return one == '\r' || one == '\n'; }, ' ');
    return result;
}

} // namespace quorvane::platform::native
