#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "testing/Track.h"

namespace quorvane::testing {

/// Where a recording stands: in a file, or in memory. Plain value; may be opened as often as one likes.
struct TrackOrigin {
    /// Of the file, or what stands for it in an error.
    std::string name;
    /// None: the file called `name`.
    std::shared_ptr<const std::string> text;
};

/// The text of a recording, from its front to its end, with no more of a file in memory than 64 KiB. A byte order mark
/// is passed over, and UTF-16 that begins with one is read as UTF-8.
class TrackInput {
public:
    /// The longest line that is read, in bytes.
    static constexpr std::size_t longestLine = std::size_t{64} * 1024;
    static constexpr int end = -1;

    explicit TrackInput(TrackOrigin theOrigin);

    /// The next byte, or `end`.
    [[nodiscard]] int peek() { return begin < limit || refill() ? static_cast<unsigned char>(*begin) : end; }
    /// Takes the next byte, or `end`.
    int get() {
        const int next = peek();
        begin += next == end ? 0 : 1;
        lines += next == '\n' ? 1 : 0;
        return next;
    }

    /// Takes a line, without its line feed; good until the next call. None at the end, or when it is too long, which
    /// `problem` says then.
    [[nodiscard]] std::optional<std::string_view> line();

    /// What comes next, as far as it is in memory: 4 KiB at least, but for the end.
    [[nodiscard]] std::string_view preview();

    /// Bytes taken so far.
    [[nodiscard]] std::uint64_t offset() const { return before + static_cast<std::uint64_t>(begin - first); }
    /// Takes all bytes before the one at @p target.
    void skipTo(std::uint64_t target);

    /// The number of the line that the next byte stands in, from 1 on. After `line`, that of the next line.
    [[nodiscard]] std::uint64_t lineNumber() const { return lines; }

    /// Why the end came too early; empty where it did not.
    [[nodiscard]] const std::string& problem() const { return failure; }
    [[nodiscard]] const std::string& name() const { return origin.name; }

private:
    struct Closer {
        void operator()(std::FILE* open) const { std::fclose(open); }
    };
    enum class Encoding { utf8, utf16BigEnd, utf16LittleEnd };

    void takeMark();
    /// Puts more behind what is in memory and not taken. False: there is no more, or no room.
    bool refill();
    std::size_t read(char* to, std::size_t count);
    void appendUTF16(std::string_view raw);
    void fail(int number);

    const TrackOrigin origin;
    std::unique_ptr<std::FILE, Closer> file;
    std::string failure;
    Encoding encoding = Encoding::utf8;
    /// A surrogate that waits for its second half, and a byte that waits for its own.
    std::uint32_t highSurrogate = 0;
    std::string oddByte;
    std::string buffer;
    /// The text in memory is [first, limit), of which [begin, limit) is not taken.
    const char* first = nullptr;
    const char* begin = nullptr;
    const char* limit = nullptr;
    /// Bytes before `first`.
    std::uint64_t before = 0;
    std::uint64_t lines = 1;
};

} // namespace quorvane::testing
