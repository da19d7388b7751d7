#include "Models/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quorvane {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

using Pair = std::array<char, 2>;

/// The two characters of each group of twelve bits.
constexpr auto pairs = [] {
    std::array<Pair, 4096> table{};
    for (std::size_t bits = 0; bits < table.size(); ++bits) {
        table[bits] = {alphabet[bits >> 6U], alphabet[bits & 0x3FU]};
    }
    return table;
}();

} // namespace

std::string base64(std::string_view bytes) {
    std::string text;
    appendBase64(text, bytes);
    return text;
}

void appendBase64(std::string& text, std::string_view bytes) {
    const std::size_t start = text.size();
    text.resize(start + (bytes.size() + 2) / 3 * 4);
    char* out = text.data() + start;
    const auto* in = reinterpret_cast<const std::uint8_t*>(bytes.data());
    std::size_t left = bytes.size();
    const auto put = [&out](std::uint32_t bits) {
        std::memcpy(out, pairs[bits].data(), 2);
        out += 2;
    };
    for (; left >= 6; left -= 6, in += 6) {
        put((std::uint32_t{in[0]} << 4U) | (in[1] >> 4U));
        put(((in[1] & 0x0FU) << 8U) | in[2]);
        put((std::uint32_t{in[3]} << 4U) | (in[4] >> 4U));
        put(((in[4] & 0x0FU) << 8U) | in[5]);
    }
    for (; left >= 3; left -= 3, in += 3) {
        put((std::uint32_t{in[0]} << 4U) | (in[1] >> 4U));
        put(((in[1] & 0x0FU) << 8U) | in[2]);
    }
    if (left == 2) {
        put((std::uint32_t{in[0]} << 4U) | (in[1] >> 4U));
        *out++ = alphabet[(in[1] & 0x0FU) << 2U];
        *out++ = '=';
    } else if (left == 1) {
        put(std::uint32_t{in[0]} << 4U);
        *out++ = '=';
        *out++ = '=';
    }
}

} // namespace quorvane
