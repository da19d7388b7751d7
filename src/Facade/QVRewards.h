#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Core/QVStatus.h"
#include "Tasks/QVReward.h"
#include "Tasks/QVTask.h"

namespace quorvane {

/// The one namespace that a host may replace with its own implementation (`Quorvane::Rewards = ...`). Main thread only.
class QVRewardsProtocol {
public:
    using ClaimCallback = std::function<void(QVStatus, const std::shared_ptr<QVReward>&)>;
    using ListCallback = std::function<void(QVStatus, const std::optional<std::vector<std::shared_ptr<QVReward>>>&)>;

    QVRewardsProtocol() = default;
    QVRewardsProtocol(const QVRewardsProtocol&) = delete;
    QVRewardsProtocol& operator=(const QVRewardsProtocol&) = delete;
    virtual ~QVRewardsProtocol() = default;

    virtual void claim(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVReward>& reward,
                       const ClaimCallback& callback) = 0;
    virtual void list(const ListCallback& callback) = 0;
};

/// The library's own: not provided in this version, so that both answer `ERROR_UNIMPLEMENTED` at once, without a
/// reward, a list or a request.
class QVRewards final : public QVRewardsProtocol {
public:
    void claim(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVReward>& reward,
               const ClaimCallback& callback) override;
    void list(const ListCallback& callback) override;
};

/// What `Quorvane::Rewards` is: it forwards to the implementation that was assigned, and to the library's own when
/// none was, or a null one. An assignment is forgotten when another platform is installed.
class RewardsNamespace {
public:
    RewardsNamespace& operator=(std::shared_ptr<QVRewardsProtocol> implementation);

    void claim(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVReward>& reward,
               const QVRewardsProtocol::ClaimCallback& callback) const;
    void list(const QVRewardsProtocol::ListCallback& callback) const;
};

} // namespace quorvane
