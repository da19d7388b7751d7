#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "JSON/AnyCodable.h"
#include "JSON/JSON.h"

namespace quorvane::sandbox {

enum class Plus { isBlank, isPlus };

/// "%41" as "A". Throws a `Refusal` for a percent sign without two hexadecimal digits and for text that is no UTF-8.
[[nodiscard]] std::string percentDecoded(std::string_view text, Plus plus);

/// The query of a request, decoded: "%41" and "+" as they are meant.
class Query {
public:
    /// Throws a `Refusal` for a percent sign without two hexadecimal digits and for text that is no UTF-8.
    static Query parse(std::string_view target);

    /// The value under @p name; none when it is absent. Throws a `Refusal` when it stands there twice.
    [[nodiscard]] std::optional<std::string> value(std::string_view name) const;
    /// A number from @p low to @p high, or a `Refusal`; none when it is absent.
    [[nodiscard]] std::optional<double> number(std::string_view name, double low, double high) const;

private:
    std::vector<std::pair<std::string, std::string>> items;
};

/// A request as a service sees it.
struct Request {
    std::string method;
    /// As it was sent.
    std::string path;
    /// What stands in the path for each "*" of the route's, decoded.
    std::vector<std::string> wildcards;
    Query query;
    std::string authorization;
    /// The headers of these names.
    std::string contentType;
    std::string contentEncoding;
    std::string host;
    std::string origin;
    /// Lives as long as the request is carried out.
    std::string_view body;
    /// The port that the service listens on.
    int port = 0;
    /// A fault asks that the credential of this request be expired.
    bool expireCredential = false;
};

struct Answer {
    int status = 200;
    std::string body;
    std::string contentType = "application/json";
    std::vector<std::pair<std::string, std::string>> headers;
};

/// A request that is answered with an error; thrown by whoever finds out.
class Refusal : public std::runtime_error {
public:
    Refusal(int status, std::string error, const std::string& description);

    int status;
    /// One word: "invalid_request".
    std::string error;
};

/// {"error": ..., "error_description": ...}
[[nodiscard]] std::string errorBody(std::string_view error, std::string_view description);
[[nodiscard]] Answer answerFor(const Refusal& refusal);
[[nodiscard]] Answer answerWith(AnyCodable::Dictionary body);

/// The body as a JSON object. Throws a `Refusal` for any other body.
[[nodiscard]] json::Document bodyOf(const Request& request);

} // namespace quorvane::sandbox
