#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "tools/ProgramTest.h"
#include "tools/Terminal.h"

namespace quorvane::tool {
namespace {

/// A terminal that keeps what is written to it.
class PseudoTerminal {
public:
    PseudoTerminal() : handle(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_EQ(grantpt(handle), 0);
        EXPECT_EQ(unlockpt(handle), 0);
        name = ptsname(handle);
        // As long as somebody holds the other end, what was written to it is kept.
        otherEnd = open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    }
    ~PseudoTerminal() {
        close(otherEnd);
        close(handle);
    }

    [[nodiscard]] const std::string& path() const { return name; }

    /// Everything that was written before.
    [[nodiscard]] std::string content() const {
        fcntl(handle, F_SETFL, O_NONBLOCK);
        std::string text;
        char block[4096];
        for (ssize_t count = 0; (count = read(handle, block, sizeof block)) > 0;) {
            text.append(block, static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int handle;
    int otherEnd = -1;
    std::string name;
};

class TerminalTest : public ProgramTest {
protected:
    Arguments signIn() {
        return {"sign-in",
                "--home",
                home,
                "--data-port",
                std::to_string(service->dataPort()),
                "--identity-port",
                std::to_string(service->identityPort())};
    }
    Arguments device() { return {"device", "--home", home}; }
};

TEST_F(TerminalTest, ALogKeepsItsBreaksAndNothingElseThatMovesTheCursor) {
    Terminal terminal;
    ::testing::internal::CaptureStderr();

    terminal.log("    an error occurred:\n        type\x1b[31m\n");
    terminal.log("");
    terminal.complain("one\nsentence");

    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "    an error occurred:\n        type?[31m\n\nquorvane: one?sentence\n");
}

TEST_F(TerminalTest, ProgressIsShownOnATerminalAndWipedAway) {
    serve();
    environment = {{"TERM", "xterm"}};
    const PseudoTerminal terminal;

    const Ended ended = finish(start(signIn(), {.output = {}, .errors = terminal.path()}));

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_EQ(terminal.content(), "signing in …\r\x1b[K");
}

TEST_F(TerminalTest, ADumbTerminalGetsNoProgress) {
    serve();
    environment = {{"TERM", "dumb"}};
    const PseudoTerminal terminal;

    EXPECT_EQ(finish(start(signIn(), {.output = {}, .errors = terminal.path()})).exitStatus, 0);

    EXPECT_EQ(terminal.content(), "");
}

TEST_F(TerminalTest, HeadingsAreBoldOnATerminal) {
    environment = {{"TERM", "xterm"}};
    const PseudoTerminal terminal;

    EXPECT_EQ(finish(start(device(), {.output = terminal.path(), .errors = {}})).exitStatus, 0);

    EXPECT_NE(terminal.content().find("\x1b[1mDevice\x1b[0m"), std::string::npos);
}

TEST_F(TerminalTest, WhoeverWantsNoColourGetsNone) {
    environment = {{"TERM", "xterm"}, {"NO_COLOR", "1"}};
    const PseudoTerminal terminal;

    EXPECT_EQ(finish(start(device(), {.output = terminal.path(), .errors = {}})).exitStatus, 0);

    const std::string content = terminal.content();
    EXPECT_NE(content.find("Device"), std::string::npos);
    EXPECT_EQ(content.find('\x1b'), std::string::npos);
}

TEST_F(TerminalTest, AFileGetsNeitherColoursNorProgress) {
    serve();
    environment = {{"TERM", "xterm"}};

    const Ended ended = run({"search", "tasks", "--near", "46.05,14.5", "--radius", "3000"});

    EXPECT_EQ(ended.output.find('\x1b'), std::string::npos);
    EXPECT_EQ(ended.errors, "");
}

} // namespace
} // namespace quorvane::tool
