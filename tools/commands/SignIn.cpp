#include "tools/commands/SignIn.h"

#include <chrono>
#include <string>

#include <CLI/CLI.hpp>

#include "API/QVAuthService.h"
#include "Facade/Quorvane.h"
#include "Platform/Clock.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

AnyCodable::Dictionary signIn(const GlobalOptions& options, Terminal& terminal) {
    Session session(options, terminal);
    session.signIn();
    const std::string user = Quorvane::getUserId().value_or("");
    const std::int64_t expiry = QVAuthService::shared().accessInfo().expiry.value_or(0);
    const std::int64_t left = expiry - platform::roundedSecondsSince1970(session.platform().clock().now());
    terminal.line("signed in as " + printable(user));
    terminal.line("the access token is good for " +
                  durationText(std::chrono::seconds(std::max<std::int64_t>(left, 0))));
    return {{"userId", user}, {"accessTokenExpiry", expiry}};
}

} // namespace

void addSignIn(CLI::App& program, Command& chosen) {
    CLI::App* const verb = program.add_subcommand("sign-in", "Sign the device's user in and keep the tokens");
    verb->fallthrough();
    verb->callback([&chosen] { chosen = signIn; });
}

} // namespace quorvane::tool
