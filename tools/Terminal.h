#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane::tool {

enum class Paint { plain, heading, faint, good, bad };

/// Where the program writes to: standard output for what was asked for, standard error for everything else. Main
/// thread only, but for `log`.
class Terminal {
public:
    /// Colours are used where standard output is a terminal, unless NO_COLOR is set or the terminal is a dumb one.
    Terminal();

    /// While silent, `line` writes nothing.
    void setSilent(bool silent) { isSilent = silent; }

    /// One line on standard output.
    void line(std::string_view text = {});

    /// "  label     value" on standard output, the value at a column of its own.
    void row(std::string_view label, std::string_view value, std::size_t labelWidth);

    /// @p text in a colour, where there are colours.
    [[nodiscard]] std::string painted(std::string_view text, Paint paint) const;

    /// A line of the log on standard error, with the breaks that it has.
    void log(std::string_view text);

    /// "quorvane: SENTENCE" on standard error.
    void complain(std::string_view sentence);

    /// Shows @p text as what is being done, until something else is written; an empty text ends it. Nothing happens
    /// where standard error is no terminal.
    void progress(std::string_view text);

    /// Sends out what was written to standard output; 0, or the number of the first error there was.
    [[nodiscard]] int flush();

private:
    void endProgress();
    void rememberError();

    bool isSilent = false;
    int outputError = 0;
    bool hasColours = false;
    bool showsProgress = false;
    std::atomic<bool> isShowing = false;
};

} // namespace quorvane::tool
