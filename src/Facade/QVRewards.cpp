#include "Facade/QVRewards.h"

#include "Facade/Gate.h"
#include "Platform/Registry.h"

namespace quorvane {
namespace {

struct Replacement {
    std::shared_ptr<QVRewardsProtocol> implementation = std::make_shared<QVRewards>();
};

/// Kept alive by the caller, as a call may assign another implementation.
std::shared_ptr<QVRewardsProtocol> implementationInUse() {
    return platform::shared<Replacement>().implementation;
}

} // namespace

void QVRewards::claim(const std::shared_ptr<QVTask>&, const std::shared_ptr<QVReward>&, const ClaimCallback& callback) {
    callback(unimplementedStatus(), nullptr);
}

void QVRewards::list(const ListCallback& callback) {
    callback(unimplementedStatus(), std::nullopt);
}

RewardsNamespace& RewardsNamespace::operator=(std::shared_ptr<QVRewardsProtocol> implementation) {
    platform::shared<Replacement>().implementation =
        implementation ? std::move(implementation) : std::make_shared<QVRewards>();
    return *this;
}

void RewardsNamespace::claim(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVReward>& reward,
                             const QVRewardsProtocol::ClaimCallback& callback) const {
    implementationInUse()->claim(task, reward, callback);
}

void RewardsNamespace::list(const QVRewardsProtocol::ListCallback& callback) const {
    implementationInUse()->list(callback);
}

} // namespace quorvane
