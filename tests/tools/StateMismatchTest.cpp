#include <thread>

#include "tools/PortTest.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

/// Answers whatever it is asked with a code for somebody else's state, one connection after the other.
class ConfusedIdentityService {
public:
    ConfusedIdentityService() : worker([this] { serve(); }) {}
    ~ConfusedIdentityService() {
        shutdown(port.socketHandle(), SHUT_RDWR);
        worker.join();
    }

    [[nodiscard]] std::string portText() const { return std::to_string(port.number()); }

private:
    void serve() const {
        const std::string body = R"({"code":"c","state":"NOTYOURS"})";
        const std::string answer =
            "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\n"
            "Content-Length: " +
            std::to_string(body.size()) + "\r\n\r\n" + body;
        for (int peer = 0; (peer = accept(port.socketHandle(), nullptr, nullptr)) >= 0;) {
            std::string request;
            char block[4096];
            for (ssize_t count = 1; count > 0 && request.find("\r\n\r\n") == std::string::npos;) {
                count = recv(peer, block, sizeof block, 0);
                request.append(block, count > 0 ? static_cast<std::size_t>(count) : 0);
            }
            send(peer, answer.data(), answer.size(), MSG_NOSIGNAL);
            close(peer);
        }
    }

    HeldPort port{HeldPort::Use::listening};
    std::thread worker;
};

class StateMismatchTest : public ProgramTest {};

TEST_F(StateMismatchTest, AnAnswerForAnotherStateCountsAsARefusedSignIn) {
    const ConfusedIdentityService confused;

    const Ended ended = run({"sign-in", "--identity-port", confused.portText()});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors, "quorvane: ERROR_UNAUTHORIZED: the service did not accept the sign-in\n");
}

} // namespace
} // namespace quorvane::tool
