#pragma once

#include <string>

#include "tools/ProgramTest.h"

namespace quorvane::tool {

/// With a service, whose invented task with a question of every type stands beside the middle of what it knows.
class TaskTest : public ProgramTest {
protected:
    static constexpr const char* here = "46.05,14.5";
    static constexpr const char* far = "46.10,14.5";
    static const std::string key;

    TaskTest();

    /// What a search printed.
    [[nodiscard]] std::string searched(const std::string& output = "--json");

    /// A file with that task alone.
    [[nodiscard]] std::string taskFile();

    /// The number of that task in what a search printed.
    [[nodiscard]] static std::string numberIn(const std::string& search);

    /// Claims the task, which has to succeed; a file with what was printed.
    std::string claimed();

    /// Runs `tasks VERB --task FILE` and what else is given.
    Ended tasks(const std::string& verb, const std::string& file, Arguments more = {});
};

} // namespace quorvane::tool
