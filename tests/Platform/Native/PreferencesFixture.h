#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include "Platform/Native/SQLitePreferences.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform::native {

/// Preferences in a real file.
class NativePreferencesTest : public ::testing::Test {
protected:
    std::unique_ptr<SQLitePreferences> open() {
        return std::make_unique<SQLitePreferences>(path, [this](std::string_view line) { lines.emplace_back(line); });
    }

    static int mode(const std::string& file) {
        struct stat status {};
        return stat(file.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 07777U) : -1;
    }

    static std::string content(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    void overwrite(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }

    /// Runs SQL on the file as another program would; the first column of the last row.
    std::string sql(const std::string& text) const {
        sqlite3* database = nullptr;
        std::string answer;
        char* error = nullptr;
        sqlite3_open(path.c_str(), &database);
        sqlite3_busy_timeout(database, 10'000);
        sqlite3_exec(
            database, text.c_str(),
            [](void* result, int, char** columns, char**) {
                *static_cast<std::string*>(result) = columns[0] == nullptr ? "(null)" : columns[0];
                return 0;
            },
            &answer, &error);
        EXPECT_EQ(error, nullptr) << error;
        sqlite3_free(error);
        sqlite3_close(database);
        return answer;
    }

    const testing::ScratchDirectory scratch;
    const std::string path = scratch.path() + "/preferences.db";
    std::vector<std::string> lines;
};

} // namespace quorvane::platform::native
