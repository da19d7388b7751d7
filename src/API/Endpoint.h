#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>

#pragma push_macro("DELETE")
#undef DELETE

namespace quorvane {

enum class RequestMethod { GET, POST, PUT, DELETE };

/// The method as it stands in a request line.
[[nodiscard]] std::string_view rawValue(RequestMethod method);

/// How an answer's body is read. `TEXT` and `NONE` decode nothing.
enum class ResponseFormat { JSON, TEXT, NONE };

/// A query parameter before it becomes text.
using ParameterValue = std::variant<std::string, std::int64_t, double, bool>;

/// Texts as they are, integers in decimal, doubles in their shortest form with ".0" where whole, bools as "true" and
/// "false".
[[nodiscard]] std::string textOf(const ParameterValue& value);

/// One call of a service: a plain value, the same for every model.
struct EndpointFields {
    /// A JSON object as text; empty when the call has no body.
    std::string body;
    RequestMethod method = RequestMethod::GET;
    /// Sent as the query, in the order of their names. Encoded when they are sent.
    std::map<std::string, ParameterValue> parameters;
    /// Begins with "/"; values inside it are already encoded (`pathComponent`).
    std::string path;
    ResponseFormat format = ResponseFormat::JSON;
    /// Whether a line in the log, at `DEBUG`, says why no answer arrived.
    bool tellsWhyUnanswered = true;
};

/// A call whose answer is decoded into `Model`. Each call is a struct derived from this, with a constructor that fills
/// the fields.
template <class Model>
struct Endpoint : EndpointFields {
    using ModelClass = Model;
};

} // namespace quorvane

#pragma pop_macro("DELETE")
