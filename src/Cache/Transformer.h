#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "JSON/CodingErrors.h"
#include "JSON/CodingKeys.h"
#include "JSON/JSON.h"

namespace quorvane::QVCache {

/// Wraps a value so that a bare text or number, too, becomes a JSON object.
template <class T>
struct TypeWrapper {
    T object{};

    static constexpr auto codingKeys = json::keys(json::key("object", &TypeWrapper::object));
};

/// Turns values into bytes and back. Both functions may throw.
template <class Value>
class Transformer {
public:
    Transformer(std::function<std::string(const Value&)> theTo, std::function<Value(std::string)> theFrom)
        : to(std::move(theTo)), from(std::move(theFrom)) {}

    std::function<std::string(const Value&)> to;
    std::function<Value(std::string)> from;
};

class TransformerFactory {
public:
    TransformerFactory() = delete;

    /// Through JSON: `{"object":...}`. Errors of the encoder and the decoder pass through; a null pointer is one of the
    /// former, a document without a value one of the latter. `json::encode` and `json::decode` must be defined for
    /// `TypeWrapper<Value>`.
    template <class Value>
    [[nodiscard]] static std::shared_ptr<Transformer<Value>> forCodable() {
        return std::make_shared<Transformer<Value>>(&encode<Value>, &decode<Value>);
    }

private:
    template <class Value>
    static constexpr bool isNull(const Value&) {
        return false;
    }
    template <class Object>
    static bool isNull(const std::shared_ptr<Object>& value) {
        return value == nullptr;
    }

    template <class Value>
    static std::string encode(const Value& value) {
        if (isNull(value)) {
            throw json::EncodingError("there is no value to encode", {{"object", std::nullopt}});
        }
        return json::encode(TypeWrapper<Value>{value});
    }

    template <class Value>
    static Value decode(std::string bytes) {
        const json::Document document = json::Document::parse(std::move(bytes));
        TypeWrapper<Value> wrapper;
        json::decode(document, wrapper);
        if (isNull(wrapper.object) || !document.dictionary()->contains("object")) {
            throw json::DecodingError(json::DecodingError::Kind::dataCorrupted, "value", "expected a value, found none",
                                      {{"object", std::nullopt}});
        }
        return std::move(wrapper.object);
    }
};

} // namespace quorvane::QVCache
