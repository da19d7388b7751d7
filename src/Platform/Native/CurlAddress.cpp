#include "Platform/Native/CurlAddress.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <curl/curl.h>
#include <strings.h>

namespace quorvane::platform::native {
namespace {

/// Where the path begins; `npos` without one.
std::size_t pathBegin(const std::string& url) {
    const std::size_t scheme = url.find("://");
    return scheme == std::string::npos ? scheme : url.find('/', scheme + 3);
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

std::size_t CurlAddress::targetIn(const std::string& url) const {
    // A proxy that is not tunnelled through is sent the whole address.
    const std::size_t begin = isEncrypted || isLoopback() ? pathBegin(url) : std::string::npos;
    return begin != std::string::npos && isPlainTarget(url, begin) ? begin : 0;
}

const CurlAddress& CurlAddressReader::read(const std::string& url) {
    if (origin.empty() || !url.starts_with(origin) || !isPlainTarget(url, origin.size())) {
        last = CurlAddress(url);
        const std::size_t path = last.isValid() ? pathBegin(url) : std::string::npos;
        origin = path != std::string::npos && path > url.find("://") + 3 ? url.substr(0, path) : "";
    }
    return last;
}

} // namespace quorvane::platform::native
