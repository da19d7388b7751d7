#include "days/DayService.h"

#include "JSON/NumberText.h"
#include "support/IdentityAnswers.h"

namespace quorvane::days {

using quorvane::testing::RecordedRequest;
using quorvane::testing::ScriptedAnswer;

void DayService::answer(quorvane::testing::ScriptedTransport& transport) {
    answerAuthorize(transport);
    transport.answer("POST", "/token", [this](const RecordedRequest&) { return token(); });
    transport.answer("GET", "/config", ScriptedAnswer::json("{}"));
    transport.answer("GET", "/locations/find", [this](const RecordedRequest& request) { return find(request); });
}

ScriptedAnswer DayService::broken(const std::string& state) {
    return state == "silent" ? ScriptedAnswer::never() : ScriptedAnswer::with(std::stoi(state));
}

ScriptedAnswer DayService::find(const RecordedRequest& request) const {
    if (state != "ok") {
        return broken(state);
    }
    const platform::Coordinate around{std::stod(request.query.at("lat")), std::stod(request.query.at("lng"))};
    const double radius = std::stod(request.query.at("rad"));
    std::string list;
    int count = 0;
    for (const KnownPlace& place : places) {
        if (platform::distance(around, place.coordinate) <= radius) {
            list += (count++ > 0 ? "," : "") + std::string(R"({"id":")") + place.id + R"(","name":")" + place.name +
                    R"(","latitude":)" + json::textOf(place.coordinate.latitude) + R"(,"longitude":)" +
                    json::textOf(place.coordinate.longitude) + '}';
        }
    }
    return ScriptedAnswer::json(R"({"count":)" + std::to_string(count) + R"(,"data":[)" + list + "]}");
}

ScriptedAnswer DayService::token() {
    if (identity != "ok") {
        return broken(identity);
    }
    constexpr std::int64_t day = 24 * 3600;
    const std::string number = std::to_string(++tokens);
    const std::int64_t seconds = tokens == 1 ? firstTokenSeconds : day;
    return ScriptedAnswer::json(tokenAnswer("access-" + number, std::to_string(seconds), "refresh-" + number));
}

} // namespace quorvane::days
