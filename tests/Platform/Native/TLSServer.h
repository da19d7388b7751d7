#pragma once

#include <memory>
#include <string>

#include "support/RawServer.h"

namespace quorvane::platform {

/// An HTTPS server on a free port of loopback that answers 200 "secret", with a certificate made for the occasion.
class TLSServer {
public:
    struct Certificate {
        /// The name that it is issued to.
        std::string name = "localhost";
        /// Days from now at which it ends.
        int days = 1;
    };
    explicit TLSServer(const Certificate& certificate);
    ~TLSServer();

    [[nodiscard]] std::uint16_t port() const;
    /// The certificate as PEM text: its own authority.
    [[nodiscard]] std::string authority() const;
    /// How many requests came through.
    [[nodiscard]] int requests() const;

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace quorvane::platform
