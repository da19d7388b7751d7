#include "Internal/Views/BarcodeScanner/BarcodeTypes.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace quorvane::capture {
namespace {

using ZXing::BarcodeFormat;
using Type = platform::BarcodeType;

struct Mapping {
    Type type;
    BarcodeFormat format;
};

/// The one place where the two sets of names meet. A UPC-A code is read as an EAN-13 one with a leading zero. Of two
/// types with the same format the first is the one with a check that must hold.
constexpr std::array<Mapping, 13> mappings{{
    {Type::aztec, BarcodeFormat::Aztec},
    {Type::code128, BarcodeFormat::Code128},
    {Type::code39Mod43, BarcodeFormat::Code39},
    {Type::code39, BarcodeFormat::Code39},
    {Type::code93, BarcodeFormat::Code93},
    {Type::dataMatrix, BarcodeFormat::DataMatrix},
    {Type::itf14, BarcodeFormat::ITF},
    {Type::interleaved2of5, BarcodeFormat::ITF},
    {Type::qr, BarcodeFormat::QRCode},
    {Type::ean8, BarcodeFormat::EAN8},
    {Type::ean13, BarcodeFormat::EAN13},
    {Type::pdf417, BarcodeFormat::PDF417},
    {Type::upce, BarcodeFormat::UPCE},
}};

bool hasMod43Check(std::string_view text) {
    constexpr std::string_view alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    if (text.size() < 2) {
        return false;
    }
    std::size_t sum = 0;
    for (const char character : text.substr(0, text.size() - 1)) {
        const std::size_t value = alphabet.find(character);
        if (value == std::string_view::npos) {
            return false;
        }
        sum += value;
    }
    return alphabet[sum % alphabet.size()] == text.back();
}

bool isITF14(std::string_view text) {
    constexpr std::size_t length = 14;
    if (text.size() != length || text.find_first_not_of("0123456789") != std::string_view::npos) {
        return false;
    }
    int sum = 0;
    for (std::size_t i = 0; i < length; ++i) {
        sum += (text[i] - '0') * (i % 2 == 0 ? 3 : 1);
    }
    return sum % 10 == 0;
}

/// Whether what was read may be called this type.
bool fits(Type type, const std::string& text) {
    switch (type) {
        case Type::code39Mod43:
            return hasMod43Check(text);
        case Type::itf14:
            return isITF14(text);
        default:
            return true;
    }
}

/// Bytes that are no text show in what a character set was guessed to make of them: by zeros, by control characters
/// beyond ASCII, by the character that stands for none.
bool looksLikeBytes(std::string_view utf8) {
    const auto isBeyondASCII = [](char unit) { return static_cast<unsigned char>(unit) >= 0x80; };
    if (std::none_of(utf8.begin(), utf8.end(), isBeyondASCII)) {
        return false;
    }
    for (std::size_t i = 0; i + 1 < utf8.size(); ++i) {
        if (utf8[i] == '\xC2' && static_cast<unsigned char>(utf8[i + 1]) < 0xA0) {
            return true;
        }
    }
    return utf8.find('\0') != std::string_view::npos || utf8.find("\xEF\xBF\xBD") != std::string_view::npos;
}

} // namespace

AskedTypes::AskedTypes(const std::vector<Type>& types) {
    for (const Mapping& mapping : mappings) {
        if (std::find(types.begin(), types.end(), mapping.type) != types.end()) {
            asked.push_back(mapping.type);
            formats |= mapping.format;
        }
    }
}

ZXing::BarcodeFormats AskedTypes::bars() const {
    return formats & BarcodeFormat::LinearCodes;
}

ZXing::BarcodeFormats AskedTypes::sureBars() const {
    return formats & (BarcodeFormat::Code128 | BarcodeFormat::Code39 | BarcodeFormat::Code93 | BarcodeFormat::EAN8 |
                      BarcodeFormat::EAN13 | BarcodeFormat::UPCE);
}

ZXing::BarcodeFormats AskedTypes::matrices() const {
    return formats & BarcodeFormat::MatrixCodes;
}

std::optional<Type> AskedTypes::typeOf(const ZXing::Result& result) const {
    for (const Mapping& mapping : mappings) {
        if (mapping.format == result.format() && asksFor(mapping.type) && fits(mapping.type, result.text())) {
            return mapping.type;
        }
    }
    return std::nullopt;
}

bool AskedTypes::asksFor(Type type) const {
    return std::find(asked.begin(), asked.end(), type) != asked.end();
}

std::optional<std::string> textOf(const ZXing::Result& result) {
    std::string text = result.text();
    const ZXing::ContentType content = result.contentType();
    const bool saysBytes = content == ZXing::ContentType::Binary || content == ZXing::ContentType::Mixed ||
                           content == ZXing::ContentType::UnknownECI;
    // Where the code names no character set, the recogniser takes control characters for bytes.
    if (result.hasECI() ? saysBytes : looksLikeBytes(text)) {
        return std::nullopt;
    }
    return text;
}

} // namespace quorvane::capture
