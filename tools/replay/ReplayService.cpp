#include "tools/replay/ReplayService.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>
#include <variant>

#include "JSON/JSON.h"
#include "Places/QVPlace.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"

namespace quorvane::tool {
namespace {

using testing::RecordedRequest;
using testing::ScriptedAnswer;

constexpr const char* tokens = R"({"access_token":"replay-access","expires_in":"3153600000","id_token":"replay-id",)"
                               R"("refresh_token":"replay-refresh","session_state":"replay","token_type":"Bearer"})";

ScriptedAnswer code(const RecordedRequest& request) {
    return ScriptedAnswer::json(R"({"code":"replay-code","state":")" + request.query.at("state") + R"("})");
}

std::optional<double> number(const RecordedRequest& request, const std::string& name) {
    const auto field = request.query.find(name);
    if (field == request.query.end()) {
        return std::nullopt;
    }
    const std::string& text = field->second;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

ScriptedAnswer found(const RecordedRequest& request, const KnownPlaces& places) {
    const auto latitude = number(request, "lat");
    const auto longitude = number(request, "lng");
    const auto radius = number(request, "rad");
    if (!latitude || !longitude || !radius) {
        return ScriptedAnswer::with(400);
    }
    std::vector<std::pair<double, const KnownPlace*>> near;
    for (const KnownPlace& place : places) {
        const double distance = platform::distance({*latitude, *longitude}, place.coordinate);
        if (distance <= *radius) {
            near.emplace_back(distance, &place);
        }
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string list;
    for (const auto& [distance, place] : near) {
        list += (list.empty() ? "" : ",") + place->text;
    }
    return ScriptedAnswer::json(R"({"count":)" + std::to_string(near.size()) + R"(,"data":[)" + list + "]}");
}

} // namespace

KnownPlaces knownPlacesIn(const std::string& path) {
    KnownPlaces places;
    for (std::string& text : objectsIn(path, "place", {"id"})) {
        const auto place = modelIn<QVPlace>(path, text);
        // A place without a point is read as one at 0, 0.
        const AnyCodable document = json::readExactly(text);
        const bool hasPoint = std::get<AnyCodable::Dictionary>(document.value).contains("latitude");
        if (!hasPoint || !place->location->coordinate || !place->location->coordinate->isValid()) {
            throw Failure(nameOfFile(path) + " holds a place without a point on the earth");
        }
        places.push_back({std::move(text), place->name, *place->location->coordinate});
    }
    return places;
}

void serve(testing::ScriptedTransport& transport, const KnownPlaces& places) {
    transport.answer("GET", "/authorize", code);
    transport.answer("POST", "/token", ScriptedAnswer::json(tokens));
    transport.answer("GET", "/config", ScriptedAnswer::json(R"({"apiVersion":"2.0.0"})"));
    transport.answer("GET", "/locations/find",
                     [&places](const RecordedRequest& request) { return found(request, places); });
    transport.answerOtherwise(ScriptedAnswer::with(404));
}

} // namespace quorvane::tool
