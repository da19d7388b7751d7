#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quorvane::fuzz {

/// Ends the program, as a fault that the fuzzer has found, unless @p holds. @p what says what went wrong, @p about with
/// what.
inline void require(bool holds, const char* what = "a requirement does not hold", const std::string& about = {}) {
    if (!holds) {
        (void)std::fprintf(stderr, "%s: %s\n", what, about.c_str());
        std::abort();
    }
}

} // namespace quorvane::fuzz
