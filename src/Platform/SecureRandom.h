#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvane::platform {

/// Random bytes that nobody can predict (the simulated platform's are seeded instead, and repeat). Safe from any
/// thread.
class SecureRandom {
public:
    SecureRandom() = default;
    SecureRandom(const SecureRandom&) = delete;
    SecureRandom& operator=(const SecureRandom&) = delete;
    virtual ~SecureRandom() = default;

    /// @p count random bytes. A system without randomness is a fatal error.
    [[nodiscard]] virtual std::vector<std::uint8_t> bytes(std::size_t count) = 0;

    /// A number from @p low to @p high inclusive, each equally likely. @p low is at most @p high.
    [[nodiscard]] std::uint64_t uniform(std::uint64_t low, std::uint64_t high);

    /// A random UUID (RFC 4122, version 4) as 36 upper-case characters.
    [[nodiscard]] std::string uuid();
};

/// @p bytes (16 of them) as a UUID's upper-case text, 8-4-4-4-12.
[[nodiscard]] std::string uuidText(const std::uint8_t* bytes);

} // namespace quorvane::platform
