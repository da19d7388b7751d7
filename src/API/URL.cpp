#include "API/URL.h"

#include <algorithm>
#include <charconv>

namespace quorvane {
namespace {

constexpr std::size_t usualQuery = 64;

bool isUnreserved(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_' ||
           character == '~';
}

void appendEncoded(std::string& encoded, std::string_view text) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    for (auto rest = text.begin(); rest != text.end();) {
        const auto plainEnd = std::find_if_not(rest, text.end(), isUnreserved);
        encoded.append(rest, plainEnd);
        rest = plainEnd;
        if (rest != text.end()) {
            const auto byte = static_cast<unsigned char>(*rest++);
            encoded += '%';
            encoded += digits[byte >> 4U];
            encoded += digits[byte & 0x0FU];
        }
    }
}

bool isHost(std::string_view host) {
    if (host.starts_with('[')) {
        return host.size() > 2 && host.ends_with(']') &&
               host.substr(1, host.size() - 2).find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
    }
    return !host.empty() && std::ranges::all_of(host, isUnreserved);
}

bool isPort(std::string_view port) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), number);
    return error == std::errc() && end == port.data() + port.size() && number > 0 && number <= 65535;
}

bool isPath(std::string_view path) {
    return std::ranges::all_of(path, [](char c) { return c > ' ' && c < '\x7f' && c != '?' && c != '#'; });
}

} // namespace

std::string percentEncoded(std::string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    appendEncoded(encoded, text);
    return encoded;
}

std::string pathComponent(std::string_view value) {
    if (value == ".") {
        return "%2E";
    }
    return value == ".." ? "%2E%2E" : percentEncoded(value);
}

std::optional<URL> URL::parse(std::string_view text) {
    std::string_view rest = text;
    for (const std::string_view scheme : {"https://", "http://"}) {
        if (rest.starts_with(scheme)) {
            rest.remove_prefix(scheme.size());
            break;
        }
    }
    if (rest.size() == text.size()) {
        return std::nullopt;
    }
    const std::string_view authority = rest.substr(0, rest.find('/'));
    const std::string_view path = rest.substr(authority.size());
    const std::size_t hostEnd = authority.rfind(':');
    const bool hasPort = hostEnd != std::string_view::npos && !authority.ends_with(']');
    if (!isHost(hasPort ? authority.substr(0, hostEnd) : authority) ||
        (hasPort && !isPort(authority.substr(hostEnd + 1))) || !isPath(path)) {
        return std::nullopt;
    }
    return URL(std::string(text));
}

URL URL::appending(std::string_view path) const {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    std::string joined;
    joined.reserve(absolute.size() + 1 + path.size());
    joined = absolute;
    while (joined.ends_with('/')) {
        joined.pop_back();
    }
    joined += '/';
    joined += path;
    return URL(std::move(joined));
}

URL URL::withQuery(const std::vector<std::pair<std::string, std::string>>& items) const {
    std::string joined;
    joined.reserve(absolute.size() + usualQuery);
    joined = absolute;
    char separator = '?';
    for (const auto& [name, value] : items) {
        joined += separator;
        appendEncoded(joined, name);
        joined += '=';
        appendEncoded(joined, value);
        separator = '&';
    }
    return URL(std::move(joined));
}

} // namespace quorvane
