#include "sandbox/DataService.h"

#include <string>
#include <string_view>

namespace quorvane::sandbox {
namespace {

/// A little more than half of the earth's circumference, in metres.
constexpr double largestRadius = 20'100'000;

[[noreturn]] void refuse(const std::string& description) {
    throw Refusal(400, "invalid_request", description);
}

std::string required(const Query& query, std::string_view name) {
    auto value = query.value(name);
    if (!value || value->empty()) {
        refuse("\"" + std::string(name) + "\" is missing or empty.");
    }
    return *value;
}

double requiredNumber(const Query& query, std::string_view name, double low, double high) {
    const auto number = query.number(name, low, high);
    if (!number) {
        refuse("\"" + std::string(name) + "\" is missing.");
    }
    return *number;
}

Circle circleOf(const Query& query) {
    return {.center = {.latitude = requiredNumber(query, "lat", -90, 90),
                       .longitude = requiredNumber(query, "lng", -180, 180)},
            .radius = requiredNumber(query, "rad", 0, largestRadius),
            .minimum = query.number("min", 0, largestRadius)};
}

Answer listOf(const std::vector<std::string>& objects) {
    std::string body = R"({"count":)" + std::to_string(objects.size()) + R"(,"data":[)";
    for (const std::string& object : objects) {
        body += object;
        body += ',';
    }
    if (!objects.empty()) {
        body.pop_back();
    }
    return Answer{.body = body + "]}"};
}

} // namespace

void DataService::authorize(const Request& request) {
    constexpr std::string_view scheme = "Bearer ";
    if (request.authorization.empty()) {
        throw Refusal(401, "missing_token", "The header \"Authorization\" is missing.");
    }
    if (!request.authorization.starts_with(scheme)) {
        throw Refusal(401, "invalid_token", "The header \"Authorization\" must be \"Bearer\", a blank and a token.");
    }
    const std::string token = request.authorization.substr(scheme.size());
    if (request.expireCredential) {
        tokens.expire(token);
    }
    if (!tokens.accepts(token)) {
        throw Refusal(401, "invalid_token", "The access token is not known or has expired.");
    }
}

Answer DataService::configuration(const Request& request) {
    authorize(request);
    for (const std::string_view name : {"deviceId", "installId", "userId"}) {
        required(request.query, name);
    }
    return answerWith({{"apiVersion", "2.0.0"}});
}

Answer DataService::places(const Request& request) {
    authorize(request);
    return listOf(store.places(circleOf(request.query)));
}

Answer DataService::tasks(const Request& request) {
    authorize(request);
    const Query& query = request.query;
    const auto campaign = query.value("cid");
    const auto place = query.value("lid");
    const bool hasPoint = query.value("lat") || query.value("lng") || query.value("rad");
    if (static_cast<int>(hasPoint) + static_cast<int>(campaign.has_value()) + static_cast<int>(place.has_value()) !=
        1) {
        refuse(R"(Tasks are found by "lat", "lng" and "rad", or by "cid", or by "lid".)");
    }
    if (hasPoint) {
        return listOf(store.tasks(circleOf(query)));
    }
    (void)query.number("min", 0, largestRadius);
    return listOf(campaign ? store.tasksOfCampaign(required(query, "cid"))
                           : store.tasksOfPlace(required(query, "lid")));
}

} // namespace quorvane::sandbox
