#pragma once

#include <memory>
#include <utility>

#include "API/Environment.h"
#include "API/QVAccessInfo.h"
#include "API/Router.h"
#include "Core/SharedService.h"
#include "Platform/Platform.h"

namespace quorvane {

class QVEndpoints;

/// The library's one client of its two services. Main thread only.
class QuorvaneAPI : public SharedService<QuorvaneAPI> {
public:
    using Environment = quorvane::Environment;

    explicit QuorvaneAPI(platform::Platform& platform);

    /// Makes the routers anew. A text in @p endpoints that is no URL is a fatal error.
    void setEndpoints(const QVEndpoints& endpoints);

    /// Calls the data service; signs the user in, or refreshes the tokens, first where the stored ones are not valid.
    ///
    /// Answers exactly once, on the main queue; but `ERROR_PUBLISHABLE_KEY` comes at once, on the calling thread, when
    /// no key is configured or no endpoints are set. A sign-in or refresh that fails answers with its own status
    /// (`ERROR_UNAUTHORIZED` where it has none), and the call is not sent.
    template <class Call>
    void request(const Call& endpoint, RequestCompletion<typename Call::ModelClass> completion) {
        if (isSignedIn()) {
            api->request(endpoint, getHeaders(), std::move(completion));
            return;
        }
        const auto answer = std::make_shared<RequestCompletion<typename Call::ModelClass>>(std::move(completion));
        signIn([this, endpoint, answer] { api->request(endpoint, getHeaders(), *answer); },
               [answer](QVStatus status) { (*answer)(status, std::nullopt, nullptr); });
    }

    /// Calls the identity service as it stands, without a sign-in. `ERROR_PUBLISHABLE_KEY` at once without endpoints.
    template <class Call>
    void authRequest(const Call& endpoint, RequestCompletion<typename Call::ModelClass> completion) {
        if (auth) {
            auth->request(endpoint, getHeaders(), std::move(completion));
        } else {
            completion(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt, nullptr);
        }
    }

    /// The headers of every request, computed anew.
    [[nodiscard]] Headers getHeaders() const;

    /// The stored tokens; an expiry that is not stored is 0.
    [[nodiscard]] QVAccessInfo getAccessInfo() const;

    /// The routers of the data service and the identity service; null until `setEndpoints`.
    std::shared_ptr<Router> api;
    std::shared_ptr<Router> auth;

private:
    /// Whether a call can be sent as it is: a key is configured, and the stored tokens are valid.
    [[nodiscard]] bool isSignedIn() const;
    /// Makes it so, and then calls @p send; or calls @p fail.
    void signIn(const std::function<void()>& send, std::function<void(QVStatus)> fail);

    platform::Platform& platform;
};

} // namespace quorvane
