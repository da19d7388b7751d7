#include "Platform/Native/RequestCheck.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace quorvane::platform::native {
namespace {

constexpr std::array<std::string_view, 4> methods = {"GET", "POST", "PUT", "DELETE"};

/// Whether @p name is a token as a header's name must be (RFC 9110, 5.6.2).
bool isToken(std::string_view name) {
    static constexpr std::array<bool, 256> mayStand = [] {
        std::array<bool, 256> result{};
        for (const char one :
             std::string_view("!#$%&'*+-.^_`|~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")) {
            result[static_cast<unsigned char>(one)] = true;
        }
        return result;
    }();
    return !name.empty() &&
           std::all_of(name.begin(), name.end(), [](char one) { return mayStand[static_cast<unsigned char>(one)]; });
}

TransportError invalid(std::string message) {
    return {TransportError::Kind::invalidRequest, std::move(message)};
}

} // namespace

std::optional<TransportError> refusalOf(const HTTPRequest& request, const CurlAddress& address) {
    if (std::find(methods.begin(), methods.end(), request.method) == methods.end()) {
        return invalid("The request's method is none of GET, POST, PUT and DELETE.");
    }
    for (const auto& [name, value] : request.headers) {
        if (!isToken(name)) {
            return invalid("The name of a header of the request is empty or holds a character that no name may hold.");
        }
        if (std::any_of(value.begin(), value.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; })) {
            return invalid("The value of the request's header " + name + " holds a line break or a zero byte.");
        }
    }
    if (!address.isValid()) {
        return invalid("The request's address is no absolute http or https address.");
    }
    return std::nullopt;
}

} // namespace quorvane::platform::native
