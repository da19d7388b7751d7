#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quorvane::sandbox {

/// What goes wrong with a request, and with how many of them. A plain value.
///
/// As text (`--fault`): a path, then parts, all separated by colons: `/locations/find:status=503:count=2`.
/// The path is matched whole; with a star at its end it matches what begins like it; `*` alone matches every path of
/// both services. The parts, at most one of the first eight:
///
///   drop                     the connection ends before any byte of an answer; the request is not carried out
///   reset                    the same, with a reset instead of an orderly end
///   truncate-body[=BYTES]    the answer ends after BYTES of its body, by default half of it
///   truncate-headers[=BYTES] the answer ends after BYTES of its head, by default just before the blank line
///   status=CODE              200 to 399: the usual answer under this status; 400 to 999: an error answer, and the
///                            request is not carried out
///   invalid-json             the usual answer with a body that is no JSON
///   expired-token            the access token of the request ends now, so that the answer is 401; the identity
///                            service answers 401
///   lost-reply               the request is carried out and the connection ends before any byte of the answer
///   delay=TIME               wait first: "500ms" or "2s", at most an hour; goes with any of the above or alone
///   count=N                  only the first N matching requests; without it all of them
///   skip=N                   leave the first N matching requests alone
struct Fault {
    enum class Kind {
        none,
        drop,
        reset,
        truncateBody,
        truncateHeaders,
        status,
        invalidJSON,
        expiredToken,
        lostReply,
    };

    std::string path = "*";
    Kind kind = Kind::none;
    std::chrono::milliseconds delay{0};
    /// For `Kind::status`: 200 to 999.
    int status = 0;
    /// For the truncations.
    std::optional<std::size_t> bytes;
    /// How many requests it meets; absent: every one.
    std::optional<int> count;
    int skip = 0;

    /// The fault that @p text describes, or a sentence that says what is wrong with it.
    static std::variant<Fault, std::string> parse(std::string_view text);

    /// The text that describes it, with what is left of its counts.
    [[nodiscard]] std::string text() const;

    [[nodiscard]] bool matches(std::string_view requestPath) const;
    /// "drop", "status=503", "delay=500ms": for the request log.
    [[nodiscard]] std::string name() const;
};

/// The faults still to happen. Safe from any thread.
class FaultList {
public:
    /// Answers a number that no other fault of this list has.
    int add(Fault fault);
    void clear();
    /// False when it is not there any more.
    bool remove(int number);
    [[nodiscard]] std::vector<std::pair<int, Fault>> all() const;
    /// The first fault that meets this request, counted as used; later ones wait until it is used up.
    std::optional<Fault> take(std::string_view requestPath);

private:
    mutable std::mutex mutex;
    std::deque<std::pair<int, Fault>> faults;
    int lastNumber = 0;
};

} // namespace quorvane::sandbox
