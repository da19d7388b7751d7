#pragma once

#include <string>
#include <string_view>

namespace quorvane::sandbox::test {

/// What came back over a socket.
struct RawReply {
    /// Every byte.
    std::string bytes;
    /// The connection ended with a reset instead of an orderly end.
    bool wasReset = false;

    [[nodiscard]] int status() const;
    [[nodiscard]] std::string body() const;
    [[nodiscard]] std::string header(std::string_view name) const;
};

/// A connection to a port of this machine that knows nothing of the code under test. Every wait ends after ten seconds.
class RawConnection {
public:
    explicit RawConnection(int port);
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;
    ~RawConnection();

    void send(std::string_view bytes) const;
    /// No more will be sent.
    void finishSending() const;
    /// One answer, as long as its "Content-Length" says; what there is when the connection ends before.
    [[nodiscard]] RawReply readAnswer();
    /// Everything up to the end of the connection.
    [[nodiscard]] RawReply readToEnd();

private:
    /// False at the end of the connection.
    bool readMore(RawReply& reply);

    int socket;
    std::string pending;
};

/// Sends @p bytes on a connection of its own and reads one answer.
[[nodiscard]] RawReply ask(int port, std::string_view bytes);

/// Whether somebody listens on a port of this machine.
[[nodiscard]] bool isListening(int port);

} // namespace quorvane::sandbox::test
