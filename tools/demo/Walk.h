#pragma once

#include <cstddef>
#include <string>

#include "Core/QVStatus.h"
#include "JSON/AnyCodable.h"
#include "Search/QVSearchService.h"
#include "tools/demo/Ride.h"

namespace quorvane::tool {

class Account;
class Session;
class Terminal;

/// The rider of the demo: signs in, searches at points of the ride, and tells what came of it. Everything throws a
/// `Failure` for any status but a success.
class Walk {
public:
    Walk(Session& theSession, Account& theAccount, Terminal& theTerminal);

    void signIn();
    void searchAt(const Ride::Stop& stop, bool isTimed);
    void summarise();

    [[nodiscard]] AnyCodable::Dictionary document() const;

private:
    void heading(const std::string& text);
    QVPlaceList searchPlaces(const platform::Location& near);
    QVTaskList searchTasks(const platform::Location& near);
    void tellResult(QVStatus status, const std::string& found);

    Session& session;
    Account& account;
    Terminal& terminal;
    std::size_t placesFound = 0;
    std::size_t tasksFound = 0;
    AnyCodable::List stops;
};

} // namespace quorvane::tool
