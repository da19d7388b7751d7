#include "tools/commands/Rewards.h"

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "Facade/Quorvane.h"
#include "JSON/JSON.h"
#include "tools/Failure.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

AnyCodable::Dictionary listRewards(const GlobalOptions& options, Terminal& terminal) {
    Session session(options, terminal);
    session.configure();
    std::optional<QVStatus> status;
    std::vector<std::shared_ptr<QVReward>> rewards;
    Quorvane::Rewards.list([&](QVStatus result, const auto& list) {
        status = result;
        rewards = list.value_or(std::vector<std::shared_ptr<QVReward>>());
    });
    session.waitForAnswer([&] { return status.has_value(); });
    if (status == QVStatus::ERROR_UNIMPLEMENTED) {
        throw Failure(*status, std::string(sentenceFor(*status)) + "; search tasks shows the rewards of tasks");
    }
    session.require(*status);

    AnyCodable::List list;
    terminal.line(counted(rewards.size(), "reward"));
    for (const auto& reward : rewards) {
        terminal.line("  " + printable(rewardText(*reward)));
        list.push_back(json::readExactly(json::encode(*reward)));
    }
    return {{"rewards", list}};
}

} // namespace

void addRewards(CLI::App& program, Command& chosen) {
    CLI::App* const verb =
        program.add_subcommand("rewards", "What the library knows of your rewards: it does not list them yet");
    verb->fallthrough();
    verb->callback([&chosen] { chosen = listRewards; });
}

} // namespace quorvane::tool
