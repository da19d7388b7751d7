#include "testing/TrackInput.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "testing/UTF8.h"

namespace quorvane::testing {
namespace {

constexpr std::size_t previewSize = 4096;
/// Room for a line of the greatest length and a preview behind it.
constexpr std::size_t capacity = TrackInput::longestLine + previewSize;

} // namespace

TrackInput::TrackInput(TrackOrigin theOrigin) : origin(std::move(theOrigin)) {
    if (origin.text) {
        first = begin = origin.text->data();
        limit = begin + origin.text->size();
    } else {
        std::error_code ignored;
        if (std::filesystem::is_other(origin.name, ignored)) {
            failure = "the file cannot be read: it is neither a regular file nor a pipe";
            return;
        }
        file.reset(std::fopen(origin.name.c_str(), "rb"));
        if (!file) {
            fail(errno);
            return;
        }
        refill();
    }
    takeMark();
}

void TrackInput::takeMark() {
    const std::string_view start = preview();
    if (start.starts_with("\xEF\xBB\xBF")) {
        begin += 3;
    } else if (start.starts_with("\xFE\xFF") || start.starts_with("\xFF\xFE")) {
        encoding = start.front() == '\xFE' ? Encoding::utf16BigEnd : Encoding::utf16LittleEnd;
        const std::string raw(start.substr(2));
        buffer.clear();
        appendUTF16(raw);
        if (origin.text) {
            appendUTF16(std::string_view(*origin.text).substr(2 + raw.size()));
        }
        first = begin = buffer.data();
        limit = begin + buffer.size();
    }
}

std::optional<std::string_view> TrackInput::line() {
    std::size_t seen = 0;
    while (true) {
        const auto available = static_cast<std::size_t>(limit - begin);
        const void* const feed = available > seen ? std::memchr(begin + seen, '\n', available - seen) : nullptr;
        const std::size_t length =
            feed != nullptr ? static_cast<std::size_t>(static_cast<const char*>(feed) - begin) : available;
        if (length > longestLine) {
            failure = "line " + std::to_string(lines) + " is longer than 64 KiB";
            return std::nullopt;
        }
        if (feed == nullptr && refill()) {
            seen = length;
            continue;
        }
        if (feed == nullptr && length == 0) {
            return std::nullopt;
        }
        const std::string_view result(begin, length);
        begin += length + (feed != nullptr ? 1 : 0);
        ++lines;
        return result;
    }
}

std::string_view TrackInput::preview() {
    while (static_cast<std::size_t>(limit - begin) < previewSize && refill()) {
    }
    return {begin, static_cast<std::size_t>(limit - begin)};
}

void TrackInput::skipTo(std::uint64_t target) {
    while (offset() < target && (begin < limit || refill())) {
        const auto count = std::min<std::uint64_t>(target - offset(), static_cast<std::uint64_t>(limit - begin));
        lines += static_cast<std::uint64_t>(std::count(begin, begin + count, '\n'));
        begin += count;
    }
}

bool TrackInput::refill() {
    if (!file) {
        return false;
    }
    const auto taken = static_cast<std::size_t>(begin - first);
    buffer.erase(0, taken);
    before += taken;
    const std::size_t kept = buffer.size();
    const std::size_t room = capacity - std::min(capacity, kept);
    if (encoding == Encoding::utf8) {
        buffer.resize(kept + room);
        buffer.resize(kept + read(buffer.data() + kept, room));
    } else {
        std::string raw(room / 2, '\0');
        raw.resize(read(raw.data(), raw.size()));
        appendUTF16(raw);
    }
    first = begin = buffer.data();
    limit = begin + buffer.size();
    return buffer.size() > kept;
}

std::size_t TrackInput::read(char* to, std::size_t count) {
    const std::size_t result = count > 0 ? std::fread(to, 1, count, file.get()) : 0;
    if (std::ferror(file.get()) != 0) {
        fail(errno);
    }
    return result;
}

void TrackInput::appendUTF16(std::string_view raw) {
    constexpr std::uint32_t replacement = 0xFFFD;
    const std::size_t high = encoding == Encoding::utf16BigEnd ? 0 : 1;
    for (const char byte : raw) {
        oddByte += byte;
        if (oddByte.size() < 2) {
            continue;
        }
        const std::uint32_t unit =
            static_cast<unsigned char>(oddByte[high]) * 256U + static_cast<unsigned char>(oddByte[1 - high]);
        oddByte.clear();
        const bool isLow = unit >= 0xDC00 && unit < 0xE000;
        if (highSurrogate != 0) {
            appendUTF8(buffer, isLow ? 0x10000 + (highSurrogate - 0xD800) * 0x400 + (unit - 0xDC00) : replacement);
        }
        const bool wasTaken = highSurrogate != 0 && isLow;
        highSurrogate = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
        if (!wasTaken && highSurrogate == 0) {
            appendUTF8(buffer, isLow ? replacement : unit);
        }
    }
}

void TrackInput::fail(int number) {
    failure = "the file cannot be read: " + std::generic_category().message(number);
}

} // namespace quorvane::testing
