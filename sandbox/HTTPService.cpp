#include "sandbox/HTTPService.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <httplib.h>
#include <sys/socket.h>
#include <unistd.h>

#include "sandbox/Connection.h"
#include "sandbox/ConnectionThreads.h"
#include "sandbox/Exchange.h"
#include "sandbox/RoutePath.h"

namespace quorvane::sandbox {
namespace {

using namespace std::chrono_literals;

constexpr auto address = "127.0.0.1";
constexpr auto idleStep = 50ms;
constexpr int backlog = 128;

/// The exchange that this thread is in. The server has no place for it in its calls.
thread_local Exchange* current = nullptr;

class TaskQueue : public httplib::TaskQueue {
public:
    explicit TaskQueue(ConnectionThreads& theThreads) : threads(theThreads) {}
    void enqueue(std::function<void()> task) override { threads.run(std::move(task)); }
    void shutdown() override { threads.join(); }

private:
    ConnectionThreads& threads;
};

/// The path as it was sent.
std::string pathOf(const httplib::Request& request) {
    return request.target.substr(0, request.target.find('?'));
}

void write(httplib::Response& response, const Answer& answer) {
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) {
        response.set_header(name, value);
    }
    const bool hasBody = answer.status != 204 && answer.status != 205 && answer.status != 304;
    response.set_content(hasBody ? answer.body : "", answer.contentType);
}

std::string bindProblem(int port, int error) {
    const std::string name = "Port " + std::to_string(port) + " of this machine";
    if (error == EADDRINUSE) {
        return name + " is already taken by another program.";
    }
    return error == EACCES ? name + " may not be used without further rights." : name + " cannot be opened.";
}

} // namespace

class HTTPService::Server : public httplib::Server {
public:
    explicit Server(Setup theSetup) : setup(std::move(theSetup)) {
        new_task_queue = [this] { return new TaskQueue(threads); };
        set_socket_options([](int socket) {
            // Without SO_REUSEPORT, which would let two programs listen on one port.
            const int on = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
            ::fcntl(socket, F_SETFD, FD_CLOEXEC);
        });
        set_keep_alive_max_count(1'000'000);
        // Everything is answered before the library routes: it would match paths by regular expressions and unpack
        // forms and compressed bodies.
        set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            write(response, answerTo(request));
            return HandlerResponse::Handled;
        });
        set_error_handler([](const httplib::Request&, httplib::Response& response) {
            if (response.body.empty()) {
                write(response, answerFor(Refusal(response.status, "bad_request", "The request is no HTTP.")));
            }
        });
    }

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    ~Server() override {
        stopSignal.raise();
        threads.close();
        if (acceptor.joinable()) {
            stop();
            acceptor.join();
        } else if (svr_sock_ != INVALID_SOCKET) {
            ::close(svr_sock_);
        }
    }

    /// Takes the port. A sentence when it fails.
    std::string open() {
        errno = 0;
        if (setup.port == 0) {
            setup.port = bind_to_any_port(address);
        } else if (!bind_to_port(address, setup.port)) {
            return bindProblem(setup.port, errno);
        }
        if (setup.port <= 0) {
            return "No port of this machine is free.";
        }
        ::listen(svr_sock_, backlog);
        return {};
    }

    void serve() {
        acceptor = std::thread([this] { listen_after_bind(); });
        while (!is_running()) {
            std::this_thread::yield();
        }
    }

    [[nodiscard]] int port() const { return setup.port; }

private:
    bool process_and_close_socket(socket_t socket) override {
        Connection connection(socket, stopSignal);
        while (waitForRequest(connection)) {
            connection.setDeadline(std::chrono::steady_clock::now() + setup.requestTime);
            Exchange exchange(connection);
            current = &exchange;
            bool isClosing = false;
            const bool isGood = process_request(exchange, false, isClosing, [&](httplib::Request& request) {
                const Route route = routeOrDefault(request);
                exchange.isUnrecorded = route.isPage;
                exchange.acceptHead(request, route.longestBody);
            });
            current = nullptr;
            if (!exchange.finish(isGood && !isClosing, setup.name, setup.record)) {
                break;
            }
        }
        connection.end(Connection::Ending::orderly);
        return true;
    }

    /// An idle connection makes room for one that waits.
    bool waitForRequest(Connection& connection) const {
        const auto end = std::chrono::steady_clock::now() + setup.idleTime;
        do {
            switch (connection.waitForRequest(idleStep)) {
                case Connection::Arrival::request:
                    return true;
                case Connection::Arrival::ended:
                    return false;
                case Connection::Arrival::nothing:
                    break;
            }
        } while (std::chrono::steady_clock::now() < end && !threads.isCrowded());
        return false;
    }

    struct Match {
        const Route* route = nullptr;
        std::vector<std::string> wildcards;
    };

    /// Throws a `Refusal` when there is none.
    [[nodiscard]] Match routeOf(const httplib::Request& request) const {
        const std::string path = pathOf(request);
        bool isPath = false;
        for (const Route& route : setup.routes) {
            if (auto wildcards = matchPath(route.path, path)) {
                isPath = true;
                if (route.method == request.method) {
                    return {&route, std::move(*wildcards)};
                }
            }
        }
        throw isPath ? Refusal(405, "method_not_allowed", "This path does not take this method.")
                     : Refusal(404, "not_found", "There is nothing under this path.");
    }

    /// What holds before the body is read.
    [[nodiscard]] Route routeOrDefault(const httplib::Request& request) const {
        try {
            return *routeOf(request).route;
        } catch (const Refusal&) {
            return {};
        }
    }

    Answer answerTo(const httplib::Request& request) {
        Exchange& exchange = *current;
        if (exchange.problem) {
            return answerFor(*exchange.problem);
        }
        if (!exchange.readBody()) {
            return {};
        }
        if (exchange.isUnrecorded) {
            return carryOut(request, false);
        }
        exchange.fault = setup.faults->take(request.path);
        if (!exchange.fault) {
            return carryOut(request, false);
        }
        const Fault& fault = *exchange.fault;
        if (fault.delay.count() > 0 && !stopSignal.sleep(fault.delay)) {
            exchange.isAbandoned = true;
            return {};
        }
        using Kind = Fault::Kind;
        if (fault.kind == Kind::drop || fault.kind == Kind::reset) {
            return {};
        }
        if (fault.kind == Kind::status && fault.status >= 400) {
            return answerFor(Refusal(fault.status, "fault", "This answer was asked for by a fault."));
        }
        Answer answer = carryOut(request, fault.kind == Kind::expiredToken);
        if (fault.kind == Kind::status) {
            answer.status = fault.status;
        } else if (fault.kind == Kind::invalidJSON) {
            answer.body.resize(answer.body.size() - std::min<std::size_t>(1, answer.body.size()));
        }
        return answer;
    }

    Answer carryOut(const httplib::Request& request, bool expireCredential) const {
        try {
            Match match = routeOf(request);
            return match.route->handle({.method = request.method,
                                        .path = pathOf(request),
                                        .wildcards = std::move(match.wildcards),
                                        .query = Query::parse(request.target),
                                        .authorization = request.get_header_value("Authorization"),
                                        .contentType = request.get_header_value("Content-Type"),
                                        .contentEncoding = request.get_header_value("Content-Encoding"),
                                        .host = request.get_header_value("Host"),
                                        .origin = request.get_header_value("Origin"),
                                        .body = current->record.body,
                                        .port = setup.port,
                                        .expireCredential = expireCredential});
        } catch (const Refusal& refusal) {
            return answerFor(refusal);
        } catch (const std::exception& error) {
            return answerFor(Refusal(500, "server_error", error.what()));
        }
    }

    Setup setup;
    StopSignal stopSignal;
    ConnectionThreads threads;
    std::thread acceptor;
};

std::variant<std::unique_ptr<HTTPService>, std::string> HTTPService::open(Setup setup) {
    auto server = std::make_unique<Server>(std::move(setup));
    if (std::string problem = server->open(); !problem.empty()) {
        return problem;
    }
    return std::unique_ptr<HTTPService>(new HTTPService(std::move(server)));
}

HTTPService::HTTPService(std::unique_ptr<Server> theServer) : server(std::move(theServer)) {}

HTTPService::~HTTPService() = default;

void HTTPService::serve() {
    server->serve();
}

int HTTPService::port() const {
    return server->port();
}

} // namespace quorvane::sandbox
