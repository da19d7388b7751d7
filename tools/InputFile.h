#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSON.h"
#include "tools/Failure.h"

namespace quorvane::tool {

/// The whole of a file; "-" is standard input. Throws a `Failure` when it cannot be read.
[[nodiscard]] std::string contentOf(const std::string& path);

/// The JSON objects of one kind that a file holds, as texts: alone, as a member called @p kind ("task"), or many of
/// both forms in a list, which may be the member `kind` + "s" of what a search printed. An object counts when it has
/// one of @p markers among its members, and always where there are none. Throws a `Failure` when the file cannot be
/// read, is no JSON, or holds anything else.
[[nodiscard]] std::vector<std::string> objectsIn(const std::string& path, const std::string& kind,
                                                 std::initializer_list<std::string_view> markers);

/// What a file is called in a sentence.
[[nodiscard]] std::string nameOfFile(const std::string& path);
/// What a file is called, wherever it lies.
[[nodiscard]] std::string baseName(const std::string& path);

/// A model from one of the texts of the file at @p path. Throws a `Failure`.
template <class Model>
[[nodiscard]] std::shared_ptr<Model> modelIn(const std::string& path, const std::string& text) {
    try {
        return std::make_shared<Model>(json::decode<Model>(text));
    } catch (const json::DecodingError& error) {
        throw Failure(nameOfFile(path) + ": " + error.what());
    }
}

} // namespace quorvane::tool
