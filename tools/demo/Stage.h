#pragma once

#include <string>

#include "Core/QVStatus.h"
#include "Platform/Location.h"
#include "Search/QVSearchService.h"
#include "tools/Results.h"

namespace quorvane::tool {

class Account;
class Session;
class Terminal;

/// What the steps of the demo share: each tells what it does, what reached the service, and what came of it.
/// Everything throws a `Failure` for any status but a success.
class Stage {
public:
    static constexpr int radius = 400;

    Stage(Session& theSession, Account& theAccount, Terminal& theTerminal)
        : session(theSession), account(theAccount), terminal(theTerminal) {}

    void heading(const std::string& text);

    /// "  SUCCESS   12 places within 400 m", after the requests that led to it.
    void tell(QVStatus status, const std::string& result);

    /// The same for a refusal that belongs to the demo. Throws a `Failure` when it is another one, or none.
    void tellRefusal(QVStatus status, QVStatus expected, const std::string& reason);

    /// "  note      text".
    void note(const std::string& label, const std::string& text);

    QVPlaceList searchPlaces(const platform::Coordinate& near, const ListStyle& style = listStyle());
    QVTaskList searchTasks(const platform::Coordinate& near);

    [[nodiscard]] static ListStyle listStyle() { return {.indent = 12, .mostRows = 5}; }

    Session& session;
    Account& account;
    Terminal& terminal;
};

} // namespace quorvane::tool
