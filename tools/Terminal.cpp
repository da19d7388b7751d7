#include "tools/Terminal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include "tools/Text.h"

namespace quorvane::tool {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::string_view codeOf(Paint paint) {
    switch (paint) {
        case Paint::heading:
            return "\x1b[1m";
        case Paint::faint:
            return "\x1b[2m";
        case Paint::good:
            return "\x1b[32m";
        case Paint::bad:
            return "\x1b[31m";
        case Paint::plain:
            break;
    }
    return "";
}

void write(std::FILE* file, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

} // namespace

Terminal::Terminal() {
    const bool isDumb = environment("TERM").empty() || environment("TERM") == "dumb";
    hasColours = isatty(STDOUT_FILENO) == 1 && !isDumb && environment("NO_COLOR").empty();
    showsProgress = isatty(STDERR_FILENO) == 1 && !isDumb;
}

void Terminal::line(std::string_view text) {
    if (!isSilent) {
        endProgress();
        write(stdout, std::string(text) + "\n");
        rememberError();
    }
}

void Terminal::row(std::string_view label, std::string_view value, std::size_t labelWidth) {
    line("  " + painted(padded(label, labelWidth), Paint::faint) + std::string(value));
}

std::string Terminal::painted(std::string_view text, Paint paint) const {
    if (!hasColours || paint == Paint::plain) {
        return std::string(text);
    }
    return std::string(codeOf(paint)) + std::string(text) + "\x1b[0m";
}

void Terminal::log(std::string_view text) {
    endProgress();
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::string lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines += printable(text.substr(begin, end - begin)) + "\n";
        begin = end + 1;
    }
    write(stderr, lines);
}

void Terminal::complain(std::string_view sentence) {
    log("quorvane: " + printable(sentence));
}

void Terminal::progress(std::string_view text) {
    endProgress();
    if (showsProgress && !text.empty()) {
        isShowing = true;
        write(stderr, text);
        std::fflush(stderr);
    }
}

int Terminal::flush() {
    std::fflush(stdout);
    rememberError();
    return outputError;
}

void Terminal::rememberError() {
    if (outputError == 0 && std::ferror(stdout) != 0) {
        outputError = errno == 0 ? EIO : errno;
    }
}

void Terminal::endProgress() {
    if (isShowing.exchange(false)) {
        write(stderr, "\r\x1b[K");
    }
}

} // namespace quorvane::tool
