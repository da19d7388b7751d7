#include "sandbox/RequestHead.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace quorvane::sandbox {
namespace {

bool isTokenCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

bool isHeaderLine(std::string_view line) {
    const auto colon = line.find(':');
    const auto isText = [](char c) { return c == '\t' || (static_cast<unsigned char>(c) >= 0x20 && c != 0x7f); };
    const auto name = line.substr(0, colon);
    return colon != std::string_view::npos && !name.empty() &&
           std::all_of(name.begin(), name.end(), isTokenCharacter) && std::all_of(line.begin(), line.end(), isText);
}

/// The parser passes over header lines that it cannot read.
bool areHeaderLines(std::string_view head) {
    constexpr std::string_view lineEnd = "\r\n";
    head.remove_prefix(std::min(head.size(), head.find(lineEnd)));
    while (head.starts_with(lineEnd)) {
        head.remove_prefix(lineEnd.size());
        const auto line = head.substr(0, head.find(lineEnd));
        if (line.empty()) {
            return true;
        }
        if (!isHeaderLine(line)) {
            return false;
        }
        head.remove_prefix(line.size());
    }
    return false;
}

std::size_t contentLength(const httplib::Request& request, std::size_t longestBody) {
    const std::string text = request.get_header_value("Content-Length");
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    const bool isNumber = !text.empty() && end == text.data() + text.size();
    if (isNumber && (error == std::errc::result_out_of_range || length > longestBody)) {
        throw Refusal(413, "body_too_large",
                      "The body of this request has at most " + std::to_string(longestBody >> 20U) + " MiB.");
    }
    if (!isNumber || error != std::errc()) {
        throw Refusal(400, "bad_request", "\"Content-Length\" is no number.");
    }
    return length;
}

} // namespace

std::size_t bodySizeOf(std::string_view head, const httplib::Request& request, std::size_t longestBody) {
    if (!areHeaderLines(head) || !request.target.starts_with('/')) {
        throw Refusal(400, "bad_request", "The request is no HTTP.");
    }
    for (const char* name : {"Authorization", "Content-Length", "Content-Type", "Host"}) {
        if (request.get_header_value_count(name) > 1) {
            throw Refusal(400, "bad_request", "The header \"" + std::string(name) + "\" stands there twice.");
        }
    }
    if (request.has_header("Transfer-Encoding")) {
        throw Refusal(411, "length_required", "A body must come with a \"Content-Length\".");
    }
    return request.has_header("Content-Length") ? contentLength(request, longestBody) : 0;
}

void simplify(httplib::Request& request) {
    for (const char* name : {"Range", "Accept-Encoding", "Expect"}) {
        request.headers.erase(name);
    }
    request.ranges.clear();
}

} // namespace quorvane::sandbox
