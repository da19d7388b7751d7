#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/HTTPTransport.h"

namespace quorvane::testing {

/// One request as a server would read it.
struct RecordedRequest {
    /// As it was sent.
    platform::HTTPRequest request;
    /// "http" or "https".
    std::string scheme;
    /// With the port where one is written ("127.0.0.1:3000").
    std::string authority;
    /// Percent-decoded, "/" at least.
    std::string path;
    /// Percent-decoded names and values; a "+" stands for a blank, as servers read it. Of one name the last counts.
    std::map<std::string, std::string> query;

    /// The first header of that name, whatever its letters' case.
    [[nodiscard]] std::optional<std::string> header(std::string_view name) const;

    /// "GET /locations/find".
    [[nodiscard]] std::string line() const { return request.method + ' ' + path; }

    /// Reads @p request. None when its URL is no absolute, encoded "http" or "https" address with a host.
    [[nodiscard]] static std::optional<RecordedRequest> read(platform::HTTPRequest request);
};

/// @p text with each %XX replaced by its byte; a "%" that no two hexadecimal digits follow stays.
[[nodiscard]] std::string percentDecoded(std::string_view text);

} // namespace quorvane::testing
