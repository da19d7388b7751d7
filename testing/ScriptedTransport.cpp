#include "testing/ScriptedTransport.h"

#include <algorithm>

#include "Platform/Precondition.h"

namespace quorvane::testing {

using platform::HTTPRequest;
using platform::HTTPResponse;
using platform::TransportError;
using Kind = TransportError::Kind;

namespace {

bool matches(std::string_view method, std::string_view path, const RecordedRequest& request) {
    const std::string_view actual = request.path;
    return (method == "*" || method == request.request.method) &&
           (path == "*" || (actual.size() >= path.size() && actual.substr(actual.size() - path.size()) == path));
}

bool hasLineBreak(const HTTPRequest& request) {
    return std::any_of(request.headers.begin(), request.headers.end(), [](const auto& header) {
        return header.first.find_first_of("\r\n") != std::string::npos ||
               header.second.find_first_of("\r\n") != std::string::npos;
    });
}

ScriptedTransport::Handler always(ScriptedAnswer answer) {
    return [answer = std::move(answer)](const RecordedRequest&) { return answer; };
}

} // namespace

ScriptedTransport::ScriptedTransport(platform::MainQueue& theQueue) : queue(theQueue) {}

ScriptedTransport::~ScriptedTransport() = default;

void ScriptedTransport::send(HTTPRequest request, Completion completion) {
    QV_PRECONDITION(queue.isMainThread(), "requests are sent on the main thread");
    if (closed) {
        return;
    }
    const Id id = ++lastId;
    const std::chrono::milliseconds timeout = request.timeout;
    exchanges[id].completion = std::move(completion);
    const bool brokenHeader = hasLineBreak(request);
    std::optional<RecordedRequest> read = RecordedRequest::read(std::move(request));
    if (!read || brokenHeader) {
        exchanges[id].result = TransportError{
            Kind::invalidRequest, read ? "A header holds a line break." : "The URL is no absolute http address."};
        queue.post([this, id] { finish(id); });
        return;
    }
    recorded.push_back(std::move(*read));
    const RecordedRequest sent = recorded.back(); // a handler may send further requests
    ScriptedAnswer answer = answerFor(sent);
    if (answer.kind == ScriptedAnswer::Kind::forward) {
        forward(id, sent);
    } else if (answer.kind == ScriptedAnswer::Kind::never) {
        expectTimeout(id, timeout);
    } else if (answer.delay.count() <= 0) {
        if (holding) {
            expectTimeout(id, timeout);
        }
        arrive(id, std::move(answer.result));
    } else {
        queue.postAfter(answer.delay, [this, id, result = std::move(answer.result)] { arrive(id, result); });
        expectTimeout(id, timeout);
    }
}

ScriptedAnswer ScriptedTransport::answerFor(const RecordedRequest& request) {
    const auto fits = [&request](const Rule& rule) { return matches(rule.method, rule.path, request); };
    if (const auto rule = std::find_if(onceRules.begin(), onceRules.end(), fits); rule != onceRules.end()) {
        const auto handler = rule->handler;
        onceRules.erase(rule);
        return (*handler)(request);
    }
    if (const auto rule = std::find_if(stayingRules.begin(), stayingRules.end(), fits); rule != stayingRules.end()) {
        const auto handler = rule->handler;
        return (*handler)(request);
    }
    if (otherwise) {
        const auto handler = otherwise;
        return (*handler)(request);
    }
    return real ? ScriptedAnswer::forward()
                : ScriptedAnswer::failure(Kind::connection, "No answer is scripted for " + request.line() + ".");
}

void ScriptedTransport::forward(Id id, const RecordedRequest& request) {
    QV_PRECONDITION(real != nullptr, "a request can only be forwarded where there is a real transport");
    ++inFlight;
    real->send(request.request, [this, id, timeout = request.request.timeout](Result result) {
        if (closed) {
            return;
        }
        --inFlight;
        if (holding) {
            expectTimeout(id, timeout);
            arrive(id, std::move(result));
        } else if (const auto found = exchanges.find(id); found != exchanges.end()) {
            found->second.result = std::move(result);
            finish(id);
        }
    });
}

void ScriptedTransport::arrive(Id id, Result result) {
    const auto found = exchanges.find(id);
    if (found == exchanges.end()) {
        return;
    }
    if (const auto* response = std::get_if<HTTPResponse>(&result);
        response != nullptr && response->body.size() > maxBodyBytes) {
        result = TransportError{Kind::tooLarge, "The answer's body is larger than 64 MiB."};
    }
    found->second.result = std::move(result);
    if (holding) {
        held.push_back(id);
    } else {
        queue.post([this, id] { finish(id); });
    }
}

void ScriptedTransport::expectTimeout(Id id, std::chrono::milliseconds timeout) {
    exchanges[id].timeout = queue.postAfter(timeout, [this, id] {
        if (const auto found = exchanges.find(id); found != exchanges.end()) {
            found->second.result = TransportError{Kind::timedOut, "No answer arrived in time."};
            finish(id);
        }
    });
}

void ScriptedTransport::finish(Id id) {
    auto exchange = exchanges.extract(id);
    if (exchange.empty()) {
        return;
    }
    held.erase(std::remove(held.begin(), held.end(), id), held.end());
    queue.cancel(exchange.mapped().timeout);
    exchange.mapped().completion(std::move(exchange.mapped().result));
}

void ScriptedTransport::close() {
    closed = true;
    inFlight = 0;
    held.clear();
    if (real) {
        real->close();
    }
    std::map<Id, Exchange> dropped;
    dropped.swap(exchanges);
}

void ScriptedTransport::answer(const std::string& method, const std::string& path, Handler handler) {
    const auto same = std::find_if(stayingRules.begin(), stayingRules.end(),
                                   [&](const Rule& rule) { return rule.method == method && rule.path == path; });
    if (same != stayingRules.end()) {
        same->handler = std::make_shared<const Handler>(std::move(handler));
    } else {
        stayingRules.push_back({method, path, std::make_shared<const Handler>(std::move(handler))});
    }
}

void ScriptedTransport::answer(const std::string& method, const std::string& path, ScriptedAnswer answer) {
    this->answer(method, path, always(std::move(answer)));
}

void ScriptedTransport::answerOnce(const std::string& method, const std::string& path, Handler handler) {
    onceRules.push_back({method, path, std::make_shared<const Handler>(std::move(handler))});
}

void ScriptedTransport::answerOnce(const std::string& method, const std::string& path, ScriptedAnswer answer) {
    answerOnce(method, path, always(std::move(answer)));
}

void ScriptedTransport::answerOtherwise(Handler handler) {
    otherwise = std::make_shared<const Handler>(std::move(handler));
}

void ScriptedTransport::answerOtherwise(ScriptedAnswer answer) {
    answerOtherwise(always(std::move(answer)));
}

void ScriptedTransport::forgetRules() {
    onceRules.clear();
    stayingRules.clear();
    otherwise = nullptr;
}

void ScriptedTransport::holdAnswers(bool hold) {
    holding = hold;
}

bool ScriptedTransport::deliverNext() {
    if (held.empty()) {
        return false;
    }
    queue.post([this, id = held.front()] { finish(id); });
    held.pop_front();
    return true;
}

std::size_t ScriptedTransport::deliver() {
    std::size_t count = 0;
    while (deliverNext()) {
        ++count;
    }
    return count;
}

std::vector<RecordedRequest> ScriptedTransport::requests(std::string_view method, std::string_view path) const {
    std::vector<RecordedRequest> result;
    std::copy_if(recorded.begin(), recorded.end(), std::back_inserter(result),
                 [&](const RecordedRequest& request) { return matches(method, path, request); });
    return result;
}

void ScriptedTransport::setRealTransport(std::unique_ptr<platform::HTTPTransport> transport) {
    real = std::move(transport);
}

} // namespace quorvane::testing
