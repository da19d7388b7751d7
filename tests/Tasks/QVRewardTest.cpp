#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tasks/QVReward.h"

namespace quorvane {
namespace {

TEST(QVReward, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"activationDelay":1,"activationExpiration":2,"activationExpiryPeriodType":3,"barcode":{"value":"123"},)"
        R"("campaignRewardKey":"cr1","claimCount":4,"clientName":"Acme","clientReference":"ref","created":5,)"
        R"("daysToEmpty":6,"isRandomDraw":true,"key":"r1","legalese":"No cash.","logo":"logo.png",)"
        R"("maxClaimCount":7,"message":{"header":"Thanks"},"modified":8,"owners":{"campaign":"c1"},)"
        R"("parentKey":"r0","randomDrawLoseMessage":"Sorry","randomDrawRatio":0.25,"redemptionExpiration":9,)"
        R"("shareText":"Look","state":"open","version":10})";

    const auto reward = json::decode<QVReward>(text);

    EXPECT_EQ(reward.activationDelay, 1);
    EXPECT_EQ(reward.activationExpiration, 2);
    EXPECT_EQ(reward.activationExpiryPeriodType, 3);
    ASSERT_TRUE(reward.barcode);
    EXPECT_EQ(reward.barcode->value, "123");
    EXPECT_EQ(reward.campaignRewardKey, "cr1");
    EXPECT_EQ(reward.claimCount, 4);
    EXPECT_EQ(reward.clientName, "Acme");
    EXPECT_EQ(reward.clientReference, "ref");
    EXPECT_EQ(reward.created, 5);
    EXPECT_EQ(reward.daysToEmpty, 6);
    EXPECT_EQ(reward.isRandomDraw, true);
    EXPECT_EQ(reward.key, "r1");
    EXPECT_EQ(reward.legalese, "No cash.");
    EXPECT_EQ(reward.logo, "logo.png");
    EXPECT_EQ(reward.maxClaimCount, 7);
    ASSERT_TRUE(reward.message);
    EXPECT_EQ(reward.message->header, "Thanks");
    EXPECT_EQ(reward.modified, 8);
    ASSERT_TRUE(reward.owners);
    EXPECT_EQ(reward.owners->campaign, "c1");
    EXPECT_EQ(reward.parentKey, "r0");
    EXPECT_EQ(reward.randomDrawLoseMessage, "Sorry");
    EXPECT_EQ(reward.randomDrawRatio, 0.25);
    EXPECT_EQ(reward.redemptionExpiration, 9);
    EXPECT_EQ(reward.shareText, "Look");
    EXPECT_EQ(reward.state, "open");
    EXPECT_EQ(reward.version, 10);
    EXPECT_EQ(json::encode(reward), text);
}

TEST(QVReward, ANewOneHoldsNothing) {
    EXPECT_EQ(json::encode(QVReward()), "{}");
    EXPECT_EQ(recoded<QVReward>("{}"), "{}");
}

TEST(QVReward, ARatioThatIsATextFailsIt) {
    EXPECT_EQ(failureOf<QVReward>(R"({"randomDrawRatio":"0.25"})"),
              "randomDrawRatio: expected a number, found \"0.25\"");
}

TEST(QVRewardBarcode, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"alternateText":"1 2 3","instructions":"Show it","isUnique":false,"rewardKey":"r1","state":"new",)"
        R"("type":"QR","value":"123"})";

    const auto barcode = json::decode<QVRewardBarcode>(text);

    EXPECT_EQ(barcode.alternateText, "1 2 3");
    EXPECT_EQ(barcode.instructions, "Show it");
    EXPECT_EQ(barcode.isUnique, false);
    EXPECT_EQ(barcode.rewardKey, "r1");
    EXPECT_EQ(barcode.state, "new");
    EXPECT_EQ(barcode.type, "QR");
    EXPECT_EQ(barcode.value, "123");
    EXPECT_EQ(json::encode(barcode), text);
}

TEST(QVRewardBarcode, ANewOneHoldsNothing) {
    EXPECT_EQ(json::encode(QVRewardBarcode()), "{}");
}

TEST(QVRewardBarcode, AValueThatIsANumberFailsIt) {
    EXPECT_EQ(failureOf<QVReward>(R"({"barcode":{"value":123}})"), "barcode.value: expected a text, found 123");
}

TEST(QVRewardMessage, EveryKeyIsReadAndWritten) {
    const auto message = json::decode<QVRewardMessage>(R"({"header":"Thanks","body":"See you"})");

    EXPECT_EQ(message.header, "Thanks");
    EXPECT_EQ(message.body, "See you");
    EXPECT_EQ(json::encode(message), R"({"header":"Thanks","body":"See you"})");
}

TEST(QVRewardMessage, ANewOneHoldsNothing) {
    EXPECT_EQ(json::encode(QVRewardMessage()), "{}");
}

TEST(QVRewardMessage, ABodyThatIsNoTextFailsIt) {
    EXPECT_EQ(failureOf<QVRewardMessage>(R"({"body":false})"), "body: expected a text, found false");
}

} // namespace
} // namespace quorvane
