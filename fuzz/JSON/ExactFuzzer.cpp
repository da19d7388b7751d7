#include <cstddef>
#include <cstdint>
#include <string>

#include "JSON/JSON.h"
#include "fuzz/Require.h"

namespace {

using quorvane::AnyCodable;
using quorvane::fuzz::require;
namespace json = quorvane::json;

} // namespace

/// What is read exactly is written so that it reads as the same again; any bytes at all can be written as a text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    require(!json::writeExactly(text).empty());
    const AnyCodable asText = json::readExactly(json::writeExactly(text));
    require(json::readExactly(json::writeExactly(asText)) == asText);

    AnyCodable value;
    try {
        value = json::readExactly(text);
    } catch (const json::DecodingError&) {
        return 0;
    }
    const std::string written = json::writeExactly(value);
    require(json::readExactly(written) == value);
    require(json::writeExactly(json::readExactly(written)) == written);
    return 0;
}
