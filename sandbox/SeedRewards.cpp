#include <string>

#include "sandbox/SeedTasks.h"

namespace quorvane::sandbox {
namespace {

ObjectText makeReward(Chance& chance, const std::string& key, const ObjectText& owners) {
    return {{"activationDelay", 0},
            {"activationExpiration", 30},
            {"activationExpiryPeriodType", chance.whole(0, 3)},
            {"campaignRewardKey", key + "-campaign"},
            {"claimCount", 0},
            {"clientName", "Sandbox"},
            {"clientReference", "coupon"},
            {"created", seedTime},
            {"modified", seedTime},
            {"isRandomDraw", false},
            {"key", key},
            {"legalese", "Has no cash value."},
            {"logo", "https://images.example.invalid/reward.png"},
            {"maxClaimCount", chance.whole(1, 3)},
            {"message", ObjectText{{"header", "Thank you"}, {"body", "Show this code at the till."}}},
            {"owners", owners},
            {"redemptionExpiration", 60},
            {"shareText", "I have earned a coupon."},
            {"state", "offered"},
            {"version", 1}};
}

void addBarcode(Chance& chance, ObjectText& reward, const std::string& key) {
    reward["barcode"] = ObjectText{{"alternateText", "Ten percent off"},
                                   {"instructions", "Let the code be scanned."},
                                   {"isUnique", true},
                                   {"rewardKey", key},
                                   {"state", "unused"},
                                   {"type", "code128"},
                                   {"value", "QV" + chance.digits(10)}};
}

void makeRandomDraw(Chance& chance, ObjectText& reward) {
    reward["isRandomDraw"] = true;
    reward["randomDrawRatio"] = static_cast<double>(chance.whole(1, 3)) / 4;
    reward["randomDrawLoseMessage"] = "Not this time.";
    reward["daysToEmpty"] = 14;
}

} // namespace

ListText makeRewards(Chance& chance, std::int64_t taskNumber, const ObjectText& owners) {
    const std::string key = numbered("reward", taskNumber);
    ListText rewards;
    if (taskNumber % 4 != 0) {
        ObjectText coupon = makeReward(chance, key, owners);
        addBarcode(chance, coupon, key);
        rewards.add(coupon);
    }
    if (taskNumber % 4 == 1) {
        ObjectText draw = makeReward(chance, key + "-draw", owners);
        draw["parentKey"] = key;
        makeRandomDraw(chance, draw);
        rewards.add(draw);
    }
    return rewards;
}

} // namespace quorvane::sandbox
