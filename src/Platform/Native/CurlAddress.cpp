#include "Platform/Native/CurlAddress.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <curl/curl.h>
#include <strings.h>

namespace quorvane::platform::native {
namespace {

/// Where the path begins, behind a scheme and an authority; `npos` without one.
std::size_t pathBegin(const std::string& url) {
    constexpr std::string_view mark = "://";
    const std::size_t scheme = url.find(':');
    if (scheme == std::string::npos || url.compare(scheme, mark.size(), mark) != 0) {
        return std::string::npos;
    }
    const std::size_t authority = scheme + mark.size();
    const std::size_t end = url.find_first_of("/?#", authority);
    return end != std::string::npos && end > authority && url[end] == '/' ? end : std::string::npos;
}

/// Whether what follows on the authority at @p begin is a path, and maybe a query, of characters that need no care.
bool isPlainTarget(const std::string& url, std::size_t begin) {
    return begin < url.size() && url[begin] == '/' &&
           std::all_of(url.begin() + static_cast<std::ptrdiff_t>(begin), url.end(),
                       [](char c) { return c > ' ' && c <= '~' && c != '#'; });
}

std::string part(CURLU* handle, CURLUPart which, unsigned int flags = 0) {
    char* text = nullptr;
    if (curl_url_get(handle, which, &text, flags) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, void (*)(void*)> owner(text, &curl_free);
    return text;
}

} // namespace

CurlAddress::CurlAddress(const std::string& url) {
    const std::unique_ptr<CURLU, void (*)(CURLU*)> handle(curl_url(), &curl_url_cleanup);
    const bool holdsZero = url.find('\0') != std::string::npos;
    if (holdsZero || !handle || curl_url_set(handle.get(), CURLUPART_URL, url.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
        return;
    }
    const std::string scheme = part(handle.get(), CURLUPART_SCHEME);
    if (scheme == "http" || scheme == "https") {
        isEncrypted = scheme == "https";
        host = part(handle.get(), CURLUPART_HOST);
        port = static_cast<std::uint16_t>(
            std::strtoul(part(handle.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT).c_str(), nullptr, 10));
    }
}

bool CurlAddress::isLoopback() const {
    constexpr std::string_view local = "localhost";
    const std::string_view name = host;
    const bool endsInLocal = name.size() >= local.size() &&
                             strncasecmp(name.data() + name.size() - local.size(), local.data(), local.size()) == 0 &&
                             (name.size() == local.size() || name[name.size() - local.size() - 1] == '.');
    return endsInLocal || host == "[::1]" ||
           (name.starts_with("127.") && name.find_first_not_of("0123456789.") == std::string_view::npos);
}

const CurlAddress& CurlAddressReader::read(const std::string& url) {
    bool isBehindOrigin = !origin.empty() && url.starts_with(origin) && isPlainTarget(url, origin.size());
    if (!isBehindOrigin) {
        last = CurlAddress(url);
        const std::size_t path = last.isValid() ? pathBegin(url) : std::string::npos;
        origin = path != std::string::npos ? url.substr(0, path) : "";
        isBehindOrigin = !origin.empty() && isPlainTarget(url, origin.size());
        // A proxy that is not tunnelled through is sent the whole address.
        hasNoPlainProxy = last.isEncrypted || last.isLoopback();
    }
    last.target = isBehindOrigin && hasNoPlainProxy ? origin.size() : 0;
    return last;
}

} // namespace quorvane::platform::native
