#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Models/QVOwners.h"

namespace quorvane {
namespace {

TEST(QVOwners, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"campaign":"c1","client":"k1","user":"u1"})";

    const auto owners = json::decode<QVOwners>(text);

    EXPECT_EQ(owners.campaign, "c1");
    EXPECT_EQ(owners.client, "k1");
    EXPECT_EQ(owners.user, "u1");
    EXPECT_EQ(json::encode(owners), text);
}

TEST(QVOwners, NewOwnersNameNobody) {
    const QVOwners owners;

    EXPECT_FALSE(owners.campaign || owners.client || owners.user);
    EXPECT_EQ(json::encode(owners), "{}");
}

TEST(QVOwners, AnOwnerThatIsNoTextFailsThem) {
    EXPECT_EQ(failureOf<QVOwners>(R"({"client":7})"), "client: expected a text, found 7");
}

} // namespace
} // namespace quorvane
