#include "sandbox/DataService.h"

#include <string>
#include <string_view>
#include <tuple>

#include "sandbox/Access.h"
#include "sandbox/TaskText.h"

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

Answer DataService::configuration(const Request& request) {
    std::ignore = authorize(request, tokens);
    for (const std::string_view name : {"deviceId", "installId", "userId"}) {
        required(request.query, name);
    }
    return answerWith({{"apiVersion", "2.0.0"}});
}

Answer DataService::places(const Request& request) {
    const Grant grant = authorize(request, tokens);
    const Circle circle = circleOf(request.query);
    notePosition(grant.user, circle);
    return listOf(store.places(circle));
}

Answer DataService::tasks(const Request& request) {
    const Grant grant = authorize(request, tokens);
    const Query& query = request.query;
    const auto campaign = query.value("cid");
    const auto place = query.value("lid");
    const bool hasPoint = query.value("lat") || query.value("lng") || query.value("rad");
    if (static_cast<int>(hasPoint) + static_cast<int>(campaign.has_value()) + static_cast<int>(place.has_value()) !=
        1) {
        refuse(R"(Tasks are found by "lat", "lng" and "rad", or by "cid", or by "lid".)");
    }
    std::vector<FoundTask> found;
    if (hasPoint) {
        const Circle circle = circleOf(query);
        notePosition(grant.user, circle);
        found = store.tasks(circle);
    } else {
        (void)query.number("min", 0, largestRadius);
        found = campaign ? store.tasksOfCampaign(required(query, "cid")) : store.tasksOfPlace(required(query, "lid"));
    }
    const Transaction transaction(database);
    const auto mine = claims.claims(grant.user);
    std::vector<std::string> objects;
    for (const FoundTask& task : found) {
        const auto claim = mine.find(task.number);
        objects.push_back(claim == mine.end() ? taskText(task) : taskText(task, claim->second));
    }
    return listOf(objects);
}

void DataService::notePosition(const std::string& user, const Circle& circle) {
    Transaction transaction(database);
    claims.setPosition(user, circle.center);
    transaction.commit();
}

} // namespace quorvane::sandbox
