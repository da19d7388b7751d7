#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <httplib.h>

#include "sandbox/Connection.h"
#include "sandbox/Fault.h"
#include "sandbox/Message.h"
#include "sandbox/RequestRecord.h"

namespace quorvane::sandbox {

/// One request on a connection and the answer to it: what the HTTP server reads from and writes to. The answer is
/// collected here and goes out at the end, so that a fault can cut it at any byte.
class Exchange : public httplib::Stream {
public:
    explicit Exchange(Connection& theConnection) : connection(theConnection) {}

    [[nodiscard]] bool is_readable() const override { return true; }
    [[nodiscard]] bool is_writable() const override { return true; }
    ssize_t read(char* bytes, std::size_t size) override;
    ssize_t write(const char* bytes, std::size_t size) override;
    using httplib::Stream::write;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    [[nodiscard]] socket_t socket() const override { return connection.descriptor(); }

    /// The head was read: finds out what is wrong with it and prepares the request for the server.
    void acceptHead(httplib::Request& request, std::size_t longestBody);

    /// Reads what follows an accepted head; false when it does not come.
    bool readBody();

    /// Sends the answer as far as the fault allows; false when the connection has ended. @p mayContinue is the
    /// server's opinion.
    bool finish(bool mayContinue, std::string_view service, const std::function<void(const RequestRecord&)>& sink);

    /// Set by whoever carries out the request.
    std::optional<Fault> fault;
    /// Nobody is told of the request.
    bool isUnrecorded = false;
    /// No answer is sent: the service ends.
    bool isAbandoned = false;
    /// Why the request is refused without being carried out.
    std::optional<Refusal> problem;
    RequestRecord record;

private:
    enum class ReadState { head, body, headTooLong, tooSlow, ended };

    void replaceUnreadable();
    void cutAnswer();

    Connection& connection;
    ReadState state = ReadState::head;
    std::string head;
    std::size_t bodySize = 0;
    std::string answer;
    std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now();
};

/// A whole answer as bytes, after which the connection ends.
[[nodiscard]] std::string lastAnswer(const Refusal& refusal);

} // namespace quorvane::sandbox
