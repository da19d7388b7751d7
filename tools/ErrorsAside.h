#pragma once

namespace quorvane::tool {

/// While it lives, what is written to standard error is dropped: the decoders of videos say there, past everybody, what
/// nobody asked for.
class ErrorsAside {
public:
    ErrorsAside();
    ErrorsAside(const ErrorsAside&) = delete;
    ErrorsAside& operator=(const ErrorsAside&) = delete;
    ~ErrorsAside();

private:
    /// Standard error itself; -1 when it is closed.
    const int kept;
};

} // namespace quorvane::tool
