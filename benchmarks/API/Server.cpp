#include "benchmarks/API/Server.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <netinet/in.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane {

namespace {

std::string answerWith(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body;
}

/// Ten places, in about 2 KB.
std::string places() {
    std::string body = R"({"count":10,"data":[)";
    for (int i = 0; i < 10; ++i) {
        const std::string number = std::to_string(i);
        body += i == 0 ? "" : ",";
        body += R"({"id":"place-)" + number + R"(","name":"Place number )" + number + R"(","address1":")" + number +
                R"( Main Street","city":"Town","country":"SI","zipCode":"1000","latitude":46.05)" + number +
                R"(,"longitude":14.5)" + number + R"(,"categories":["food","open"],"active":true})";
    }
    return body + "]}";
}

/// One task with three questions, in about 2 KB.
std::string task() {
    std::string body =
        R"({"count":1,"data":[{"key":"5f2c1a9be07d4c3388a1b6d2","title":"Shelf check, soft drinks",)"
        R"("description":"Walk to the soft drinks and look at the two shelves at the height of your eyes. )"
        R"(Answer for what stands there now, not for what the labels say. Please do not move anything, )"
        R"(and ask nobody for help: the check is about what a customer sees who comes in at this time.",)"
        R"("created":1760000000000,"due":1760600000000,"distance":1.25,"state":"generated",)"
        R"("location":{"address1":"12 Main Street","city":"Town","country":"SI","zipCode":"1000",)"
        R"("latitude":46.05,"longitude":14.5},"questions":[)";
    for (int i = 0; i < 3; ++i) {
        const std::string number = std::to_string(i);
        body += i == 0 ? "" : ",";
        body +=
            R"({"key":"question-)" + number + R"(","order":)" + number +
            R"(,"type":"openEnded","question":"How many bottles of the brand in the picture can you count on the shelf )"
            R"(at the height of your eyes, those behind the first row included? Count a pack as one bottle, and )"
            R"(leave out bottles that have been opened.","openTextPlaceholder":"A number, in figures",)"
            R"("isOptional":false,"singleLineResponse":true})";
    }
    return body + R"(],"rewards":[],"taskRequirements":["A camera","A quarter of an hour"],"version":1}]})";
}

/// Answers whoever connects, for ever. A request is taken to arrive in one piece.
[[noreturn]] void serve(int listener) {
    const std::string ofPlaces = answerWith(places());
    const std::string ofTasks = answerWith(task());
    std::vector<pollfd> files{{listener, POLLIN, 0}};
    for (;;) {
        poll(files.data(), files.size(), -1);
        if ((files[0].revents & POLLIN) != 0) {
            files.push_back({accept(listener, nullptr, nullptr), POLLIN, 0});
        }
        for (std::size_t i = 1; i < files.size(); ++i) {
            char request[8192];
            if (files[i].revents == 0) {
                continue;
            }
            const ssize_t length = read(files[i].fd, request, sizeof request);
            if (length <= 0) {
                close(files[i].fd);
                files[i].fd = -1;
                continue;
            }
            const std::string_view line(request, static_cast<std::size_t>(length));
            const std::string& bytes = line.starts_with("GET /generate/tasks") ? ofTasks : ofPlaces;
            if (send(files[i].fd, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0) {
                std::_Exit(1);
            }
        }
        std::erase_if(files, [](const pollfd& file) { return file.fd < 0; });
    }
}

std::uint16_t start() {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (listener < 0 || bind(listener, generic, length) != 0 || listen(listener, 16) != 0 ||
        getsockname(listener, generic, &length) != 0) {
        std::perror("the benchmark's server");
        std::abort();
    }
    const pid_t parent = getpid();
    if (fork() == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            std::_Exit(1);
        }
        serve(listener);
    }
    close(listener);
    return ntohs(address.sin_port);
}

} // namespace

std::uint16_t answeringPort() {
    static const std::uint16_t port = start();
    return port;
}

} // namespace quorvane
