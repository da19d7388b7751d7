#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "API/Endpoint.h"
#include "API/URL.h"
#include "Core/QVStatus.h"
#include "JSON/JSON.h"

namespace quorvane {

/// Names and values, in the order in which they are sent.
using Headers = std::vector<std::pair<std::string, std::string>>;

/// What a call answers: the status, the raw dictionary of a JSON object, and the decoded model. Dictionary and model
/// are present with `SUCCESS` only, and not when the answer had no body; the dictionary also with
/// `ERROR_SERIALIZATION` when the body was a JSON object.
template <class Model>
using RequestCompletion =
    std::function<void(QVStatus, const std::optional<json::Dictionary>&, const std::shared_ptr<Model>&)>;

/// Sends the calls of one service. Main thread only.
class Router {
public:
    explicit Router(URL theBaseURL) : baseURL(std::move(theBaseURL)) {}

    /// Sends @p endpoint once, with a timeout of 10 seconds, and answers exactly once, on the main queue: the status by
    /// the table of `statusOf`, `ERROR_NETWORK` when no answer arrived, `ERROR_SERIALIZATION` when an answer's body
    /// could not be decoded, which is logged.
    template <class Call>
    void request(const Call& endpoint, Headers&& headers,
                 RequestCompletion<typename Call::ModelClass> completion) const {
        using Model = typename Call::ModelClass;
        const Decoder decoder = [](const json::Document& document) -> std::shared_ptr<void> {
            auto model = std::make_shared<Model>();
            json::decode(document, *model);
            return model;
        };
        send(endpoint, std::move(headers), decoder, [completion = std::move(completion)](const Answer& answer) {
            completion(answer.status, answer.dictionary, std::static_pointer_cast<Model>(answer.model));
        });
    }

    URL baseURL;

private:
    struct Answer {
        QVStatus status = QVStatus::ERROR_UNKNOWN;
        std::optional<json::Dictionary> dictionary;
        std::shared_ptr<void> model;
    };
    using Decoder = std::shared_ptr<void> (*)(const json::Document&);

    void send(const EndpointFields& endpoint, Headers&& headers, Decoder decoder,
              std::function<void(const Answer&)> completion) const;
    [[nodiscard]] static Answer read(int httpStatus, std::string body, ResponseFormat format, Decoder decoder);
};

/// 200 to 399 are `SUCCESS`, redirects included; 500 to 599 `ERROR_SERVER`; anything without a status of its own
/// `ERROR_UNKNOWN`.
[[nodiscard]] QVStatus statusOf(int httpStatus);

} // namespace quorvane
