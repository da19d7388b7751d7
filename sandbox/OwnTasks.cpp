#include "sandbox/OwnTasks.h"

#include <stdexcept>

#include "JSON/JSON.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskService.h"

namespace quorvane::sandbox {
namespace {

/// The object without what depends on the request.
std::string bodyOf(const std::string& text) {
    AnyCodable object = json::readExactly(text);
    auto& members = std::get<AnyCodable::Dictionary>(object.value);
    members.erase("distance");
    members.erase("state");
    return json::writeExactly(object);
}

StoredTask taskOf(const std::string& text) {
    const auto model = json::decode<QVTask>(text);
    if (model.key.value_or("").empty()) {
        throw std::invalid_argument("a task of one's own has no key");
    }
    return {.coordinate = QVTaskService().getTaskLocation(model).coordinate,
            .body = bodyOf(text),
            .key = *model.key,
            .state = model.state == QVTask::State::cancelled ? "cancelled" : "generated",
            .campaign = model.owners ? model.owners->campaign.value_or("") : "",
            .placeID = model.locationKey,
            .placeKey = model.locationKey};
}

} // namespace

void addOwnTasks(std::vector<StoredTask>& tasks, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        try {
            tasks.push_back(taskOf(text));
            tasks.back().number = static_cast<std::int64_t>(tasks.size()) - 1;
        } catch (const json::DecodingError& error) {
            throw std::invalid_argument("a task of one's own cannot be read: " + std::string(error.what()));
        }
    }
}

} // namespace quorvane::sandbox
