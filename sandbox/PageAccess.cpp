#include "sandbox/PageAccess.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace quorvane::sandbox {
namespace {

constexpr std::array<std::string_view, 3> localHosts{"localhost", "127.0.0.1", "[::1]"};

bool isPort(std::string_view text) {
    return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isLocal(std::string_view host) {
    return std::any_of(localHosts.begin(), localHosts.end(), [host](std::string_view name) {
        return host == name ||
               (host.starts_with(name) && host[name.size()] == ':' && isPort(host.substr(name.size() + 1)));
    });
}

} // namespace

void requireLocalHost(const Request& request) {
    if (!isLocal(request.host)) {
        throw Refusal(403, "forbidden_host", "The page is served under \"localhost\" and \"127.0.0.1\" only.");
    }
}

void requireOwnPage(const Request& request) {
    requireLocalHost(request);
    if (request.origin != "http://" + request.host) {
        throw Refusal(403, "forbidden_origin", "The header \"Origin\" must be that of the page.");
    }
}

Answer pageAnswer(std::string body, std::string contentType) {
    return {.body = std::move(body),
            .contentType = std::move(contentType),
            .headers = {{"Content-Security-Policy",
                         "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
                         "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
                        {"X-Content-Type-Options", "nosniff"},
                        {"Referrer-Policy", "no-referrer"},
                        {"Cross-Origin-Resource-Policy", "same-origin"},
                        {"Cross-Origin-Opener-Policy", "same-origin"},
                        {"Cache-Control", "no-store"}}};
}

} // namespace quorvane::sandbox
