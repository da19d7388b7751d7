#include "testing/RecordedRequest.h"

#include <algorithm>

#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

int hexDigit(char c) {
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = lowered(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string formDecoded(std::string text) {
    std::replace(text.begin(), text.end(), '+', ' ');
    return percentDecoded(text);
}

std::map<std::string, std::string> readQuery(std::string_view text) {
    std::map<std::string, std::string> query;
    while (!text.empty()) {
        const std::string_view item = text.substr(0, text.find('&'));
        text.remove_prefix(std::min(item.size() + 1, text.size()));
        const std::size_t equals = item.find('=');
        if (!item.empty()) {
            query[formDecoded(std::string(item.substr(0, equals)))] =
                equals == std::string_view::npos ? std::string() : formDecoded(std::string(item.substr(equals + 1)));
        }
    }
    return query;
}

} // namespace

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::optional<std::string> RecordedRequest::header(std::string_view name) const {
    const auto found = std::find_if(request.headers.begin(), request.headers.end(), [name](const auto& entry) {
        return std::equal(name.begin(), name.end(), entry.first.begin(), entry.first.end(),
                          [](char a, char b) { return lowered(a) == lowered(b); });
    });
    return found == request.headers.end() ? std::nullopt : std::optional(found->second);
}

std::optional<RecordedRequest> RecordedRequest::read(platform::HTTPRequest request) {
    std::string_view rest = request.url;
    if (std::any_of(rest.begin(), rest.end(), [](char c) { return c <= ' ' || c > '~'; })) {
        return std::nullopt;
    }
    RecordedRequest result;
    for (const std::string_view scheme : {"http", "https"}) {
        if (rest.substr(0, scheme.size()) == scheme && rest.substr(scheme.size(), 3) == "://") {
            result.scheme = scheme;
        }
    }
    if (result.scheme.empty()) {
        return std::nullopt;
    }
    rest.remove_prefix(result.scheme.size() + 3);
    rest = rest.substr(0, rest.find('#'));
    result.authority = rest.substr(0, rest.find_first_of("/?"));
    if (result.authority.empty() || result.authority.front() == ':') {
        return std::nullopt;
    }
    rest.remove_prefix(result.authority.size());
    const std::size_t question = rest.find('?');
    result.path = percentDecoded(rest.substr(0, question));
    if (result.path.empty()) {
        result.path += '/';
    }
    if (question != std::string_view::npos) {
        result.query = readQuery(rest.substr(question + 1));
    }
    result.request = std::move(request);
    return result;
}

} // namespace quorvane::testing
