#include "JSON/CodingErrors.h"

#include <utility>

namespace quorvane::json {

namespace {

std::string message(const CodingPath& path, const std::string& description) {
    return path.empty() ? description : textOf(path) + ": " + description;
}

} // namespace

std::string textOf(const CodingPath& path) {
    std::string text;
    for (const CodingKey& step : path) {
        if (step.intValue) {
            text += '[' + step.stringValue + ']';
        } else {
            text += text.empty() ? step.stringValue : '.' + step.stringValue;
        }
    }
    return text;
}

DecodingError::DecodingError(Kind theKind, std::string theExpectedType, std::string theDescription, CodingPath path)
    : std::runtime_error(message(path, theDescription)),
      kind(theKind),
      expectedType(std::move(theExpectedType)),
      description(std::move(theDescription)),
      codingPath(std::move(path)) {}

EncodingError::EncodingError(const std::string& description, CodingPath path)
    : std::runtime_error(message(path, description)), codingPath(std::move(path)) {}

} // namespace quorvane::json
