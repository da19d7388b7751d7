#include "tools/InputFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <variant>

#include "tools/Text.h"

namespace quorvane::tool {
namespace {

/// The member @p name of @p value when it is an object and has one of that kind.
template <class Kind>
const Kind* member(const AnyCodable& value, std::string_view name) {
    const auto* const object = std::get_if<AnyCodable::Dictionary>(&value.value);
    if (object == nullptr) {
        return nullptr;
    }
    const auto entry = object->find(name);
    return entry == object->end() ? nullptr : std::get_if<Kind>(&entry->second.value);
}

bool isMarked(const AnyCodable::Dictionary& object, std::initializer_list<std::string_view> markers) {
    return markers.size() == 0 || std::any_of(markers.begin(), markers.end(), [&object](std::string_view name) {
               return object.find(name) != object.end();
           });
}

} // namespace

std::string nameOfFile(const std::string& path) {
    return path == "-" ? "standard input" : printable(path);
}

std::string baseName(const std::string& path) {
    return printable(std::filesystem::path(path).filename().string());
}

std::string contentOf(const std::string& path) {
    std::string content;
    errno = 0;
    if (path == "-") {
        content.assign(std::istreambuf_iterator<char>(std::cin), {});
        return content;
    }
    std::ifstream file(path, std::ios::binary);
    constexpr std::size_t piece = 65'536;
    while (file) {
        const std::size_t before = content.size();
        content.resize(before + piece);
        file.read(content.data() + before, piece);
        content.resize(before + static_cast<std::size_t>(file.gcount()));
    }
    if (!file.eof()) {
        throw Failure(nameOfFile(path) + ": " + std::strerror(errno));
    }
    return content;
}

std::vector<std::string> objectsIn(const std::string& path, const std::string& kind,
                                   std::initializer_list<std::string_view> markers) {
    AnyCodable document;
    try {
        document = json::readExactly(contentOf(path));
    } catch (const json::DecodingError& error) {
        throw Failure(nameOfFile(path) + ": " + error.what());
    }
    const auto* list = member<AnyCodable::List>(document, kind + "s");
    if (list == nullptr) {
        list = std::get_if<AnyCodable::List>(&document.value);
    }
    std::vector<std::string> texts;
    const auto add = [&](const AnyCodable& entry) {
        const auto* object = member<AnyCodable::Dictionary>(entry, kind);
        if (object == nullptr) {
            object = std::get_if<AnyCodable::Dictionary>(&entry.value);
        }
        if (object == nullptr || !isMarked(*object, markers)) {
            throw Failure(nameOfFile(path) + " holds what is no " + kind);
        }
        texts.push_back(json::writeExactly(*object));
    };
    if (list == nullptr) {
        add(document);
    } else {
        for (const AnyCodable& entry : *list) {
            add(entry);
        }
    }
    if (texts.empty()) {
        throw Failure(nameOfFile(path) + " holds no " + kind);
    }
    return texts;
}

} // namespace quorvane::tool
