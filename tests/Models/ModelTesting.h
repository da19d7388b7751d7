#pragma once

#include <string>
#include <utility>

#include "JSON/CodingErrors.h"
#include "JSON/JSON.h"

namespace quorvane {

/// Why a text is no such model; empty when it is one.
template <class Model>
[[nodiscard]] std::string failureOf(std::string text) {
    try {
        (void)json::decode<Model>(std::move(text));
    } catch (const json::DecodingError& error) {
        return error.what();
    }
    return {};
}

/// The text that the model decoded from a text encodes as.
template <class Model>
[[nodiscard]] std::string recoded(std::string text) {
    return json::encode(json::decode<Model>(std::move(text)));
}

/// The document of a region of which only the identifier is known.
[[nodiscard]] inline std::string regionText(const std::string& identifier) {
    return R"({"id":")" + identifier + R"(","code":"","name":"","type":""})";
}

} // namespace quorvane
