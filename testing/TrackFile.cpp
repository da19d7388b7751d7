#include "testing/TrackFile.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <system_error>

namespace quorvane::testing {
namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

TrackError unreadable(const std::string& path, int number) {
    return {path + ": the file cannot be read: " + std::generic_category().message(number) + '.'};
}

} // namespace

std::optional<std::string> readTrackFile(const std::string& path, std::size_t maxBytes, TrackError& error) {
    const std::unique_ptr<std::FILE, Closer> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = unreadable(path, errno);
        return std::nullopt;
    }
    std::string content;
    std::array<char, 65536> block{};
    while (true) {
        const std::size_t count = std::fread(block.data(), 1, block.size(), file.get());
        content.append(block.data(), count);
        if (content.size() > maxBytes) {
            error = {path + ": the file is larger than " + std::to_string(maxBytes / (1024 * 1024)) + " MiB."};
            return std::nullopt;
        }
        if (count < block.size()) {
            break;
        }
    }
    if (std::ferror(file.get()) != 0) {
        error = unreadable(path, errno);
        return std::nullopt;
    }
    return content;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string result = "\"";
    for (const char c : text.substr(0, longest)) {
        result += c >= ' ' && c <= '~' ? c : '?';
    }
    return result + (text.size() > longest ? "...\"" : "\"");
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<double> readDecimal(std::string_view text) {
    std::string_view digits = trimmed(text);
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    double value = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (problem != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace quorvane::testing
