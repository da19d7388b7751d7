#include "Tasks/TaskEndpoints.h"

#include "API/URL.h"
#include "JSON/JSON.h"

namespace quorvane {
namespace {

/// The model as a JSON object; an empty object, which sends no body, when it cannot be encoded.
template <class Model>
std::string bodyOf(const Model& model) {
    try {
        return json::encode(model, json::Style::pretty);
    } catch (const json::EncodingError&) {
        return {};
    }
}

} // namespace

ClaimTaskEndpoint::ClaimTaskEndpoint(const QVTask& task) {
    method = RequestMethod::POST;
    path = "/tasks";
    body = bodyOf(task);
}

CreateTaskResponseEndpoint::CreateTaskResponseEndpoint(const QVTaskResponse& taskResponse) {
    method = RequestMethod::POST;
    path = "/tasks/" + pathComponent(taskResponse.taskKey) + "/responses";
    body = bodyOf(taskResponse);
}

} // namespace quorvane
