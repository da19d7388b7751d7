#include "sandbox/Message.h"

#include <charconv>
#include <cmath>

#include "JSON/JSON.h"
#include "JSON/NumberText.h"
#include "JSON/UTF8.h"

namespace quorvane::sandbox {

std::string percentDecoded(std::string_view text, Plus plus) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '+' && plus == Plus::isBlank) {
            result += ' ';
        } else if (text[i] == '%') {
            unsigned value = 0;
            const std::string_view digits = text.substr(i + 1, 2);
            const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
            if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) {
                throw Refusal(400, "invalid_request", "A percent sign in the target is not followed by two digits.");
            }
            result += static_cast<char>(value);
            i += 2;
        } else {
            result += text[i];
        }
    }
    if (!json::isValidUTF8(result)) {
        throw Refusal(400, "invalid_request", "The target is not UTF-8.");
    }
    return result;
}

Query Query::parse(std::string_view target) {
    Query query;
    const auto question = target.find('?');
    std::string_view rest = question == std::string_view::npos ? "" : target.substr(question + 1);
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find('&'));
        rest.remove_prefix(std::min(rest.size(), item.size() + 1));
        if (!item.empty()) {
            const auto equals = std::min(item.find('='), item.size());
            query.items.emplace_back(percentDecoded(item.substr(0, equals), Plus::isBlank),
                                     percentDecoded(item.substr(std::min(item.size(), equals + 1)), Plus::isBlank));
        }
    }
    return query;
}

std::optional<std::string> Query::value(std::string_view name) const {
    std::optional<std::string> found;
    for (const auto& [key, text] : items) {
        if (key == name) {
            if (found) {
                throw Refusal(400, "invalid_request", "\"" + std::string(name) + "\" stands in the query twice.");
            }
            found = text;
        }
    }
    return found;
}

std::optional<double> Query::number(std::string_view name, double low, double high) const {
    const auto text = value(name);
    if (!text) {
        return std::nullopt;
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || end != text->data() + text->size() || !std::isfinite(number) || number < low ||
        number > high) {
        throw Refusal(400, "invalid_request",
                      "\"" + std::string(name) + "\" must be a number from " + json::textOf(low) + " to " +
                          json::textOf(high) + ".");
    }
    return number;
}

Refusal::Refusal(int theStatus, std::string theError, const std::string& description)
    : std::runtime_error(description), status(theStatus), error(std::move(theError)) {}

std::string errorBody(std::string_view error, std::string_view description) {
    return json::writeExactly(
        AnyCodable::Dictionary{{"error", AnyCodable(error)}, {"error_description", AnyCodable(description)}});
}

Answer answerFor(const Refusal& refusal) {
    Answer answer{.status = refusal.status, .body = errorBody(refusal.error, refusal.what())};
    if (refusal.status == 401) {
        answer.headers.emplace_back("WWW-Authenticate", "Bearer error=\"" + refusal.error + "\"");
    }
    return answer;
}

Answer answerWith(AnyCodable::Dictionary body) {
    return Answer{.body = json::writeExactly(AnyCodable(std::move(body)))};
}

json::Document bodyOf(const Request& request) {
    const std::string& type = request.contentType;
    if (!request.contentEncoding.empty() || type.substr(0, type.find(';')) != "application/json") {
        throw Refusal(415, "unsupported_media_type", "The body must be plain \"application/json\".");
    }
    try {
        auto document = json::Document::parse(std::string(request.body));
        if (document.dictionary()) {
            return document;
        }
    } catch (const json::DecodingError& error) {
        throw Refusal(400, "invalid_request", "The body is no JSON: " + std::string(error.what()));
    }
    throw Refusal(400, "invalid_request", "The body must be a JSON object.");
}

} // namespace quorvane::sandbox
