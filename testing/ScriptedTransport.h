#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/HTTPTransport.h"
#include "Platform/MainQueue.h"
#include "testing/RecordedRequest.h"
#include "testing/ScriptedAnswer.h"

namespace quorvane::testing {

/// A transport that answers what the test says and records every well-formed request. Main thread only.
///
/// Rules are tried in this order: those for one request, as they were added; those that stay, as they were added; the
/// answer for everything else. Without one the request goes to the real transport where there is one, and fails with
/// `connection` where there is none. The timeout of a request runs on the virtual clock.
class ScriptedTransport : public platform::HTTPTransport {
public:
    using Handler = std::function<ScriptedAnswer(const RecordedRequest& request)>;

    /// @p queue outlives the transport.
    explicit ScriptedTransport(platform::MainQueue& queue);
    ~ScriptedTransport() override;

    void send(platform::HTTPRequest request, Completion completion) override;
    void close() override;

    /// Answers every request with that method ("*": any) whose decoded path is @p path or ends with it ("*": any), so
    /// that "/config" stands for "/v2/config" too. Replaces the rule with the same method and path.
    void answer(const std::string& method, const std::string& path, ScriptedAnswer answer);
    void answer(const std::string& method, const std::string& path, Handler handler);

    /// As `answer`, for one request. Several of these make a sequence.
    void answerOnce(const std::string& method, const std::string& path, ScriptedAnswer answer);
    void answerOnce(const std::string& method, const std::string& path, Handler handler);

    /// Answers what no rule matches.
    void answerOtherwise(ScriptedAnswer answer);
    void answerOtherwise(Handler handler);

    /// Drops every rule.
    void forgetRules();

    /// While on, answers that would arrive are held back until `deliver`, their requests' timeouts running.
    void holdAnswers(bool hold);
    /// Posts the completions of all held answers in their order; says how many.
    std::size_t deliver();
    /// Posts the completion of the oldest held answer; false when there is none.
    bool deliverNext();
    [[nodiscard]] std::size_t heldCount() const { return held.size(); }

    /// Every request so far, in the order of sending. Those that fail with `invalidRequest` are not among them.
    [[nodiscard]] const std::vector<RecordedRequest>& requests() const { return recorded; }
    /// Those of them with that method and path, matched as in `answer`.
    [[nodiscard]] std::vector<RecordedRequest> requests(std::string_view method, std::string_view path) const;
    void forgetRequests() { recorded.clear(); }

    /// Requests whose completion has not run, held ones included.
    [[nodiscard]] std::size_t openCount() const { return exchanges.size(); }

    /// Sets the transport to a real service.
    void setRealTransport(std::unique_ptr<platform::HTTPTransport> transport);
    /// Requests that the real transport has not answered.
    [[nodiscard]] int realRequestsInFlight() const { return inFlight; }

private:
    struct Rule {
        std::string method;
        std::string path;
        /// Shared, so that it may drop its own rule and still keeps its state from call to call.
        std::shared_ptr<const Handler> handler;
    };
    struct Exchange {
        Completion completion;
        Result result;
        platform::MainQueue::Ticket timeout = 0;
    };
    using Id = std::uint64_t;

    [[nodiscard]] ScriptedAnswer answerFor(const RecordedRequest& request);
    void forward(Id id, const RecordedRequest& request);
    void arrive(Id id, Result result);
    void expectTimeout(Id id, std::chrono::milliseconds timeout);
    void finish(Id id);

    platform::MainQueue& queue;
    std::unique_ptr<platform::HTTPTransport> real;
    std::deque<Rule> onceRules;
    std::vector<Rule> stayingRules;
    std::shared_ptr<const Handler> otherwise;
    std::vector<RecordedRequest> recorded;
    std::map<Id, Exchange> exchanges;
    std::deque<Id> held;
    Id lastId = 0;
    int inFlight = 0;
    bool holding = false;
    bool closed = false;
};

} // namespace quorvane::testing
