#include "tools/TaskTest.h"

#include "JSON/JSON.h"

namespace quorvane::tool {

const std::string TaskTest::key = "task-00000";

TaskTest::TaskTest() {
    serve();
}

std::string TaskTest::searched(const std::string& output) {
    const Ended ended = run({"search", "tasks", "--near", here, "--radius", "1000", output});
    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    return ended.output;
}

std::string TaskTest::numberIn(const std::string& search) {
    const AnyCodable::List tasks = listIn(objectIn(json::readExactly(search)), "tasks");
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        if (textIn(objectIn(objectIn(tasks[i]), "task"), "key") == key) {
            return std::to_string(i + 1);
        }
    }
    ADD_FAILURE() << "no " << key << " in " << search;
    return "1";
}

std::string TaskTest::taskFile() {
    const std::string search = searched();
    const AnyCodable::List tasks = listIn(objectIn(json::readExactly(search)), "tasks");
    const auto entry = objectIn(tasks.at(std::stoul(numberIn(search)) - 1));
    return makeFile("task.json", json::writeExactly(objectIn(entry, "task")));
}

std::string TaskTest::claimed() {
    const Ended ended = tasks("claim", taskFile(), {"--at", here, "--json"});
    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    return makeFile("claimed.json", ended.output);
}

Ended TaskTest::tasks(const std::string& verb, const std::string& file, Arguments more) {
    Arguments arguments{"tasks", verb, "--task", file};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
}

} // namespace quorvane::tool
