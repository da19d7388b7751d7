#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Tasks/QVRewardBarcode.h"
#include "Tasks/QVRewardMessage.h"

namespace quorvane {

/// What a user earns for a task. Times, periods and states are the service's own.
class QVReward {
public:
    std::optional<std::int64_t> activationDelay;
    std::optional<std::int64_t> activationExpiration;
    std::optional<std::int64_t> activationExpiryPeriodType;
    std::shared_ptr<QVRewardBarcode> barcode;
    std::optional<std::string> campaignRewardKey;
    std::optional<std::int64_t> claimCount;
    std::optional<std::string> clientName;
    std::optional<std::string> clientReference;
    std::optional<std::int64_t> created;
    std::optional<std::int64_t> daysToEmpty;
    std::optional<bool> isRandomDraw;
    std::optional<std::string> key;
    std::optional<std::string> legalese;
    std::optional<std::string> logo;
    std::optional<std::int64_t> maxClaimCount;
    std::shared_ptr<QVRewardMessage> message;
    std::optional<std::int64_t> modified;
    std::shared_ptr<QVOwners> owners;
    std::optional<std::string> parentKey;
    std::optional<std::string> randomDrawLoseMessage;
    std::optional<double> randomDrawRatio;
    std::optional<std::int64_t> redemptionExpiration;
    std::optional<std::string> shareText;
    std::optional<std::string> state;
    std::optional<std::int64_t> version;

    static constexpr auto codingKeys = json::keys(
        json::key("activationDelay", &QVReward::activationDelay),
        json::key("activationExpiration", &QVReward::activationExpiration),
        json::key("activationExpiryPeriodType", &QVReward::activationExpiryPeriodType),
        json::key("barcode", &QVReward::barcode), json::key("campaignRewardKey", &QVReward::campaignRewardKey),
        json::key("claimCount", &QVReward::claimCount), json::key("clientName", &QVReward::clientName),
        json::key("clientReference", &QVReward::clientReference), json::key("created", &QVReward::created),
        json::key("daysToEmpty", &QVReward::daysToEmpty), json::key("isRandomDraw", &QVReward::isRandomDraw),
        json::key("key", &QVReward::key), json::key("legalese", &QVReward::legalese),
        json::key("logo", &QVReward::logo), json::key("maxClaimCount", &QVReward::maxClaimCount),
        json::key("message", &QVReward::message), json::key("modified", &QVReward::modified),
        json::key("owners", &QVReward::owners), json::key("parentKey", &QVReward::parentKey),
        json::key("randomDrawLoseMessage", &QVReward::randomDrawLoseMessage),
        json::key("randomDrawRatio", &QVReward::randomDrawRatio),
        json::key("redemptionExpiration", &QVReward::redemptionExpiration),
        json::key("shareText", &QVReward::shareText), json::key("state", &QVReward::state),
        json::key("version", &QVReward::version));
};

} // namespace quorvane
