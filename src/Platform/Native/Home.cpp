#include "Platform/Native/Home.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quorvane::platform::native {
namespace {

/// A variable that names an absolute path; empty for another one.
std::string pathVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? value : "";
}

} // namespace

std::string homeDirectory(const std::string& given) {
    std::string home = given;
    if (home.empty()) {
        if (const std::string data = pathVariable("XDG_DATA_HOME"); !data.empty()) {
            home = data + "/quorvane";
        } else if (const std::string user = pathVariable("HOME"); !user.empty()) {
            home = user + "/.local/share/quorvane";
        } else {
            return {};
        }
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(home, error);
    home = error ? home : absolute.string();
    while (home.size() > 1 && home.back() == '/') {
        home.pop_back();
    }
    return home;
}

} // namespace quorvane::platform::native
