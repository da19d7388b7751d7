#include "Platform/Native/CurlAddress.h"

#include <cstdlib>
#include <string_view>

#include <strings.h>

namespace quorvane::platform::native {
namespace {

std::string part(CURLU* handle, CURLUPart which, unsigned int flags = 0) {
    char* text = nullptr;
    if (curl_url_get(handle, which, &text, flags) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, void (*)(void*)> owner(text, &curl_free);
    return text;
}

} // namespace

CurlAddress::CurlAddress(const std::string& url) : handle(curl_url(), &curl_url_cleanup) {
    const bool holdsZero = url.find('\0') != std::string::npos;
    if (holdsZero || !handle || curl_url_set(handle.get(), CURLUPART_URL, url.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
        return;
    }
    const std::string scheme = part(handle.get(), CURLUPART_SCHEME);
    if (scheme == "http" || scheme == "https") {
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

} // namespace quorvane::platform::native
