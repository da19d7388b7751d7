#include "sandbox/Photo.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace quorvane::sandbox {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t none = 0xFF;

constexpr auto values = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(none);
    for (std::size_t i = 0; i < alphabet.size(); ++i) {
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return table;
}();

struct Kind {
    std::string_view type;
    std::string_view prefix;
    std::string_view beginning;
};

constexpr std::array<Kind, 2> kinds{{
    {"image/jpeg", "data:image/jpeg;base64,", "\xFF\xD8\xFF"},
    {"image/png", "data:image/png;base64,", "\x89PNG\r\n\x1A\n"},
}};

/// None when it is not what RFC 4648, section 4, makes of bytes.
std::optional<std::string> decoded(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : (text.ends_with('=') ? 1 : 0);
    text.remove_suffix(padding);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t pending = 0;
    unsigned bits = 0;
    for (const char character : text) {
        const std::uint8_t value = values[static_cast<unsigned char>(character)];
        if (value == none) {
            return std::nullopt;
        }
        pending = (pending << 6U | value) & 0xFFFFU;
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(pending >> bits & 0xFFU);
        }
    }
    const bool isWhole = (pending & ((1U << bits) - 1)) == 0;
    return isWhole ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

Photo photoOf(std::string_view dataURL) {
    for (const Kind& kind : kinds) {
        if (!dataURL.starts_with(kind.prefix)) {
            continue;
        }
        auto bytes = decoded(dataURL.substr(kind.prefix.size()));
        if (!bytes) {
            throw Refusal(400, "invalid_photo", "\"base64\" holds text that is no base64.");
        }
        if (!bytes->starts_with(kind.beginning)) {
            throw Refusal(400, "invalid_photo", "The bytes in \"base64\" are no " + std::string(kind.type) + ".");
        }
        return {.type = std::string(kind.type), .bytes = std::move(*bytes)};
    }
    throw Refusal(400, "invalid_photo", R"("base64" must be a data URL in base64 of a JPEG or PNG image.)");
}

Answer photoAnswer(std::optional<Photo> photo) {
    if (!photo) {
        throw Refusal(404, "not_found", "There is no such photo.");
    }
    return {.body = std::move(photo->bytes),
            .contentType = std::move(photo->type),
            .headers = {{"X-Content-Type-Options", "nosniff"},
                        {"Content-Security-Policy", "default-src 'none'; sandbox"},
                        {"Cross-Origin-Resource-Policy", "same-origin"}}};
}

} // namespace quorvane::sandbox
