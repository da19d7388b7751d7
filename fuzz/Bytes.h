#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvane::fuzz {

/// A fuzzer's input as a row of choices. Once it is used up, every choice is the first one.
class Bytes {
public:
    Bytes(const std::uint8_t* theData, std::size_t theSize) : data(theData), end(theData + theSize) {}

    [[nodiscard]] bool isEmpty() const { return data == end; }

    std::uint8_t next() { return isEmpty() ? std::uint8_t{0} : *data++; }
    bool flag() { return next() % 2 == 1; }
    std::size_t below(std::size_t count) { return next() % count; }

    template <class Value, std::size_t count>
    const Value& oneOf(const Value (&choices)[count]) {
        static_assert(count <= 256);
        return choices[below(count)];
    }

private:
    const std::uint8_t* data;
    const std::uint8_t* end;
};

} // namespace quorvane::fuzz
