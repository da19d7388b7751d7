#include "API/Router.h"

#include <chrono>

#include "Core/QVLogger.h"
#include "Platform/HTTPTransport.h"
#include "Platform/Platform.h"

namespace quorvane {
namespace {

constexpr std::chrono::seconds requestTimeout{10};

void logError(const std::string& message) {
    QVLogger::shared().log(QVLogLevel::ERROR, message);
}

void logDecodingError(const json::DecodingError& error) {
    if (error.kind == json::DecodingError::Kind::typeMismatch) {
        logError("    an error occurred decoding response:\n        type '" + error.expectedType +
                 "' mismatch: " + error.description + "\n        codingPath: " + json::textOf(error.codingPath));
    } else {
        logError(std::string("Error in response: ") + error.what());
    }
}

} // namespace

QVStatus statusOf(int httpStatus) {
    if (httpStatus >= 200 && httpStatus <= 399) {
        return QVStatus::SUCCESS;
    }
    if (httpStatus >= 500 && httpStatus <= 599) {
        return QVStatus::ERROR_SERVER;
    }
    switch (httpStatus) {
        case 400:
            return QVStatus::ERROR_BAD_REQUEST;
        case 401:
            return QVStatus::ERROR_UNAUTHORIZED;
        case 402:
            return QVStatus::ERROR_PAYMENT_REQUIRED;
        case 403:
            return QVStatus::ERROR_FORBIDDEN;
        case 404:
            return QVStatus::ERROR_NOT_FOUND;
        case 429:
            return QVStatus::ERROR_RATE_LIMIT;
        default:
            return QVStatus::ERROR_UNKNOWN;
    }
}

void Router::send(const EndpointFields& endpoint, Headers&& headers, Decoder decoder,
                  std::function<void(const Answer&)> completion) const {
    std::vector<std::pair<std::string, std::string>> query;
    query.reserve(endpoint.parameters.size());
    for (const auto& [name, value] : endpoint.parameters) {
        query.emplace_back(name, textOf(value));
    }

    platform::HTTPRequest request;
    request.method = rawValue(endpoint.method);
    request.url = baseURL.appending(endpoint.path).withQuery(query).text();
    request.headers = std::move(headers);
    request.body = endpoint.body;
    request.timeout = requestTimeout;

    platform::current().transport().send(
        std::move(request), [decoder, format = endpoint.format, tells = endpoint.tellsWhyUnanswered,
                             completion = std::move(completion)](platform::HTTPTransport::Result result) {
            if (const auto* const error = std::get_if<platform::TransportError>(&result)) {
                if (tells) {
                    QVLogger::shared().log(QVLogLevel::DEBUG, "no answer: " + error->message);
                }
                completion({QVStatus::ERROR_NETWORK, std::nullopt, nullptr});
                return;
            }
            auto& response = std::get<platform::HTTPResponse>(result);
            completion(read(response.status, std::move(response.body), format, decoder));
        });
}

Router::Answer Router::read(int httpStatus, std::string body, ResponseFormat format, Decoder decoder) {
    Answer answer;
    answer.status = statusOf(httpStatus);
    if (answer.status != QVStatus::SUCCESS || format != ResponseFormat::JSON || body.empty()) {
        return answer;
    }
    try {
        const json::Document document = json::Document::parse(std::move(body));
        answer.dictionary = document.dictionary();
        answer.model = decoder(document);
        if (!answer.dictionary) {
            throw json::DecodingError(json::DecodingError::Kind::typeMismatch, "object",
                                      "the answer is no JSON object");
        }
    } catch (const json::DecodingError& error) {
        logDecodingError(error);
        answer.status = QVStatus::ERROR_SERIALIZATION;
        answer.model = nullptr;
    }
    return answer;
}

} // namespace quorvane
