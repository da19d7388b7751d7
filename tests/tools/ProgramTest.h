#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "JSON/AnyCodable.h"
#include "sandbox/Sandbox.h"

namespace quorvane::tool {

/// What a run of the program left behind.
struct Ended {
    /// -1 when the program had to be killed because it did not end.
    int exitStatus = -1;
    std::string output;
    std::string errors;

    /// The output as the one JSON document, with its line break, that it has to be.
    [[nodiscard]] AnyCodable::Dictionary document() const;
};

using Arguments = std::vector<std::string>;

/// Runs the program itself, in a home folder and a folder for temporary files of the test's own. At the end of each
/// test both are empty: nothing is written outside the folder that --home names.
class ProgramTest : public ::testing::Test {
protected:
    struct Running {
        pid_t process = 0;
        std::string output;
        std::string errors;
    };

    /// Where the program's standard output or standard error goes; empty: to a file that is read at the end.
    struct Streams {
        std::string output;
        std::string errors;
        /// A file that is the program's standard input; empty: nothing.
        std::string input;
    };

    ProgramTest();
    ~ProgramTest() override;
    void TearDown() override;

    /// Starts a sandbox with faults as its command line takes them.
    void serve(const std::vector<std::string>& faults = {}, sandbox::SandboxOptions options = {});

    /// Runs the program to its end with --home, and with the ports of the sandbox that was started.
    Ended run(Arguments arguments);

    /// Runs it with these arguments only.
    Ended runPlain(const Arguments& arguments);

    Running start(const Arguments& arguments, const Streams& streams = {});
    static Ended finish(const Running& running);

    /// Makes a file in the test's own folder; its path.
    [[nodiscard]] std::string makeFile(const std::string& name, const std::string& content) const;

    /// Puts a file where the home has its caches, so that nothing can be stored in them, whoever runs this.
    void makeCachesAFile() const;

    /// How often the sandbox was asked for a path.
    [[nodiscard]] std::size_t requestsFor(const std::string& path) const;

    std::filesystem::path scratch;
    std::filesystem::path home;
    std::filesystem::path temporary;
    std::vector<std::pair<std::string, std::string>> environment;
    std::unique_ptr<sandbox::Sandbox> service;

private:
    std::filesystem::path userHome;
    int runs = 0;
};

/// The text under @p key; an empty one, and a failure, when there is none.
[[nodiscard]] std::string textIn(const AnyCodable::Dictionary& document, const std::string& key);
/// The list under @p key, likewise.
[[nodiscard]] AnyCodable::List listIn(const AnyCodable::Dictionary& document, const std::string& key);
/// The object under @p key, likewise.
[[nodiscard]] AnyCodable::Dictionary objectIn(const AnyCodable::Dictionary& document, const std::string& key);
[[nodiscard]] AnyCodable::Dictionary objectIn(const AnyCodable& value);
/// The number under @p key, whole or not, likewise.
[[nodiscard]] double numberIn(const AnyCodable::Dictionary& document, const std::string& key);

[[nodiscard]] std::vector<std::string> linesOf(const std::string& text);

} // namespace quorvane::tool
