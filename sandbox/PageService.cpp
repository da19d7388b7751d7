#include "sandbox/PageService.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "JSON/JSON.h"
#include "JSON/UTF8.h"
#include "Places/QVPlace.h"
#include "Tasks/ClaimRule.h"
#include "Tasks/QVTaskResponse.h"
#include "Tasks/QVTaskService.h"
#include "sandbox/PageAccess.h"
#include "sandbox/PageFiles.h"
#include "sandbox/Photo.h"
#include "sandbox/TaskText.h"
#include "sandbox/TaskWalk.h"

namespace quorvane::sandbox {
namespace {

using Object = AnyCodable::Dictionary;

constexpr std::size_t mostRequests = 500;
constexpr std::int64_t mostResponses = 500;
constexpr std::size_t longestShownBody = std::size_t{16} << 10U;

Answer jsonAnswer(Object object) {
    return pageAnswer(json::writeExactly(AnyCodable(std::move(object))), "application/json");
}

/// What a client sent may be any bytes.
std::string shown(std::string_view text) {
    std::string result(text);
    if (!json::isValidUTF8(text)) {
        std::replace_if(
            result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
    }
    return result;
}

/// As much as is shown of a body, not cut within a character.
std::string_view beginningOf(std::string_view body) {
    std::size_t size = std::min(body.size(), longestShownBody);
    while (size > 0 && size < body.size() && (static_cast<unsigned char>(body[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    return body.substr(0, size);
}

constexpr std::array<std::pair<std::string_view, const char*>, 4> types{{
    {".html", "text/html; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".svg", "image/svg+xml"},
}};

Answer partOfPage(std::string_view name) {
    const auto part = pageFile(name);
    for (const auto& [ending, type] : types) {
        if (part && name.ends_with(ending)) {
            return pageAnswer(std::string(part->content), type);
        }
    }
    throw Refusal(404, "not_found", "The page has no such part.");
}

template <class Number>
Number numberIn(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || number < 0) {
        throw Refusal(400, "invalid_request", "\"" + std::string(text) + "\" is no number.");
    }
    return number;
}

Object pointOf(const platform::Coordinate& coordinate) {
    return {{"latitude", coordinate.latitude}, {"longitude", coordinate.longitude}};
}

/// What was answered, as a reader wants it: the texts of the picked choices, and what was typed.
std::string answerText(const QVTaskResponse& response) {
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    for (const std::string& key : response.answers.value_or(std::vector<std::string>())) {
        const auto& choices = response.question->answers;
        const auto choice =
            std::find_if(choices.begin(), choices.end(), [&](const auto& candidate) { return candidate->key == key; });
        add(choice == choices.end() ? key : (*choice)->displayText);
    }
    if (!response.userAnswer.value_or("").empty()) {
        add(*response.userAnswer);
    }
    return text;
}

} // namespace

Answer PageService::document(const Request& request) {
    requireLocalHost(request);
    return partOfPage("index.html");
}

Answer PageService::file(const Request& request) {
    requireLocalHost(request);
    return partOfPage(request.wildcards.front());
}

Answer PageService::map(const Request& request) {
    requireLocalHost(request);
    AnyCodable::List placeList;
    for (const std::string& body : places.allPlaces()) {
        const auto place = json::decode<QVPlace>(body);
        Object object = pointOf(place.location->coordinate.value_or(platform::Coordinate{}));
        object.insert({{"id", place._id}, {"name", place.name}});
        placeList.emplace_back(std::move(object));
    }
    AnyCodable::List taskList;
    for (const FoundTask& stored : places.allTasks()) {
        const QVTask task = modelOf(stored);
        Object object = pointOf(QVTaskService().getTaskLocation(task).coordinate);
        const double miles = task.claimDistanceOverride.value_or(ClaimRule::defaultRadiusMiles);
        object.insert({{"number", stored.number},
                       {"key", task.key.value_or("")},
                       {"title", task.title.value_or("")},
                       {"state", stored.state},
                       {"associatesOnly", task.associatesOnly},
                       {"questions", task.questions.size()},
                       {"limitMiles", miles},
                       {"limitMetres", miles / ClaimRule::miles(1)}});
        taskList.emplace_back(std::move(object));
    }
    return jsonAnswer({{"places", std::move(placeList)}, {"tasks", std::move(taskList)}});
}

Answer PageService::activity(const Request& request) {
    requireLocalHost(request);
    const auto requests = numberIn<std::size_t>(request.query.value("requests").value_or("0"));
    const auto responses = numberIn<std::int64_t>(request.query.value("responses").value_or("0"));
    Object object{{"run", run}, {"requests", requestsAfter(requests)}, {"faults", faultList()}};
    std::vector<Claim> all;
    {
        const Transaction transaction(database);
        all = tasks.claims();
        object.insert({{"responses", responsesAfter(responses)}, {"users", users()}});
    }
    object.emplace("claims", listOf(all));
    return jsonAnswer(std::move(object));
}

Answer PageService::request(const Request& request) {
    requireLocalHost(request);
    const auto record = log.record(numberIn<std::size_t>(request.wildcards.front()));
    if (!record) {
        throw Refusal(404, "not_found", "The request is not in the log any more.");
    }
    AnyCodable::List headers;
    for (const auto& [name, value] : record->headers) {
        headers.emplace_back(shown(name) + ": " + shown(value));
    }
    return jsonAnswer({{"headers", std::move(headers)},
                       {"body", shown(beginningOf(record->body))},
                       {"bodyBytes", record->body.size()}});
}

Answer PageService::photo(const Request& request) {
    requireLocalHost(request);
    const Transaction transaction(database);
    return photoAnswer(tasks.photo(request.wildcards.front()));
}

Answer PageService::addFault(const Request& request) {
    requireOwnPage(request);
    const auto text = bodyOf(request).dictionary()->value("fault");
    const auto* words = text ? std::get_if<std::string>(&text->value) : nullptr;
    if (words == nullptr) {
        throw Refusal(400, "invalid_request", "\"fault\" must be a text.");
    }
    auto parsed = Fault::parse(*words);
    if (const auto* sentence = std::get_if<std::string>(&parsed)) {
        throw Refusal(400, "invalid_request", *sentence);
    }
    faults.add(std::get<Fault>(std::move(parsed)));
    return jsonAnswer({{"faults", faultList()}});
}

Answer PageService::removeFault(const Request& request) {
    requireOwnPage(request);
    faults.remove(numberIn<int>(request.wildcards.front()));
    return jsonAnswer({{"faults", faultList()}});
}

AnyCodable::List PageService::requestsAfter(std::size_t number) const {
    AnyCodable::List list;
    log.visit(number, mostRequests, [&](std::size_t position, const RequestRecord& record) {
        list.emplace_back(Object{{"number", position},
                                 {"service", record.service},
                                 {"method", shown(record.method)},
                                 {"target", shown(record.target)},
                                 {"status", record.status},
                                 {"bytes", record.bytes},
                                 {"milliseconds", record.duration.count()},
                                 {"fault", record.fault}});
    });
    return list;
}

AnyCodable::List PageService::responsesAfter(std::int64_t number) {
    AnyCodable::List list;
    for (const NumberedResponse& stored : tasks.responses(number, mostResponses)) {
        const auto response = json::decode<QVTaskResponse>(stored.response.body);
        list.emplace_back(Object{{"number", stored.number},
                                 {"claim", stored.claim},
                                 {"question", response.question->question},
                                 {"answer", answerText(response)},
                                 {"score", response.score.value_or(0)},
                                 {"photo", stored.response.photo}});
    }
    return list;
}

AnyCodable::List PageService::listOf(const std::vector<Claim>& claims) {
    AnyCodable::List list;
    for (const Claim& claim : claims) {
        list.emplace_back(Object{{"number", claim.number},
                                 {"task", claim.task},
                                 {"user", claim.user},
                                 {"state", claim.isCompleted ? "completed" : "running"},
                                 {"score", claim.score},
                                 {"rewards", claim.isCompleted ? rewardsOf(claim) : AnyCodable::List()}});
    }
    return list;
}

AnyCodable::List PageService::rewardsOf(const Claim& claim) {
    AnyCodable::List list;
    const auto stored = places.task(claim.task);
    QVTask task = stored ? modelOf(*stored) : QVTask();
    decideRewards(task, claim.user);
    for (const auto& reward : task.rewards) {
        const bool isLost = reward->state == "lost";
        const std::string text = isLost ? reward->randomDrawLoseMessage.value_or("")
                                        : (reward->message ? reward->message->body.value_or("") : "");
        list.emplace_back(
            Object{{"state", reward->state.value_or("")}, {"text", text.empty() ? reward->key.value_or("") : text}});
    }
    return list;
}

AnyCodable::List PageService::users() {
    AnyCodable::List list;
    for (const auto& [user, coordinate] : tasks.positions()) {
        Object object = pointOf(coordinate);
        object.emplace("user", user);
        list.emplace_back(std::move(object));
    }
    return list;
}

AnyCodable::List PageService::faultList() const {
    AnyCodable::List list;
    for (const auto& [number, fault] : faults.all()) {
        list.emplace_back(Object{{"number", number}, {"text", shown(fault.text())}});
    }
    return list;
}

} // namespace quorvane::sandbox
