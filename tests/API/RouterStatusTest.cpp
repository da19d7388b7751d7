#include <map>

#include "API/Router.h"
#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

class RouterStatusTest : public APITest {
protected:
    using Reported = Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>>;

    [[nodiscard]] Reported answered(const Answer& answer) {
        transport().answer("GET", "/test", answer);
        Reported calls;
        api().api->request(TestEndpoint(), {}, calls.record());
        EXPECT_EQ(calls.count(), 0U) << "the answer came inside the call";
        phone->runUntilIdle();
        EXPECT_EQ(calls.count(), 1U);
        return calls;
    }
};

TEST_F(RouterStatusTest, EveryHTTPStatusHasItsMeaning) {
    const std::map<int, QVStatus> own{
        {400, QVStatus::ERROR_BAD_REQUEST},      {401, QVStatus::ERROR_UNAUTHORIZED},
        {402, QVStatus::ERROR_PAYMENT_REQUIRED}, {403, QVStatus::ERROR_FORBIDDEN},
        {404, QVStatus::ERROR_NOT_FOUND},        {429, QVStatus::ERROR_RATE_LIMIT},
    };
    for (int code = 0; code <= 999; ++code) {
        QVStatus expected = QVStatus::ERROR_UNKNOWN;
        if (code >= 200 && code < 400) {
            expected = QVStatus::SUCCESS;
        } else if (code >= 500 && code < 600) {
            expected = QVStatus::ERROR_SERVER;
        } else if (const auto found = own.find(code); found != own.end()) {
            expected = found->second;
        }
        EXPECT_EQ(statusOf(code), expected) << code;
    }
}

TEST_F(RouterStatusTest, TheEdgesOfTheRangesAreWhereTheyAre) {
    EXPECT_EQ(statusOf(199), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(statusOf(200), QVStatus::SUCCESS);
    EXPECT_EQ(statusOf(399), QVStatus::SUCCESS);
    EXPECT_EQ(statusOf(405), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(statusOf(499), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(statusOf(500), QVStatus::ERROR_SERVER);
    EXPECT_EQ(statusOf(599), QVStatus::ERROR_SERVER);
    EXPECT_EQ(statusOf(600), QVStatus::ERROR_UNKNOWN);
}

TEST_F(RouterStatusTest, AnErrorStatusCarriesNoResultsWhateverItsBody) {
    for (const int code : {199, 400, 401, 402, 403, 404, 405, 429, 500, 599, 600}) {
        const Reported calls = answered(Answer::with(code, R"({"apiVersion":"1"})"));

        EXPECT_EQ(calls.first<0>(), statusOf(code)) << code;
        EXPECT_FALSE(calls.first<1>()) << code;
        EXPECT_EQ(calls.first<2>(), nullptr) << code;
    }
}

TEST_F(RouterStatusTest, ARedirectWhoseBodyDecodesIsASuccess) {
    const Reported calls = answered(Answer::with(302, R"({"apiVersion":"1"})"));

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    ASSERT_NE(calls.first<2>(), nullptr);
    EXPECT_EQ(calls.first<2>()->apiVersion, "1");
    EXPECT_EQ(transport().requests().size(), 1U);
}

TEST_F(RouterStatusTest, EveryTransportErrorIsANetworkErrorWithoutResults) {
    for (const Transport kind : {Transport::invalidRequest, Transport::connection, Transport::truncated,
                                 Transport::timedOut, Transport::tooLarge}) {
        const Reported calls = answered(Answer::failure(kind));

        EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_NETWORK);
        EXPECT_FALSE(calls.first<1>());
        EXPECT_EQ(calls.first<2>(), nullptr);
    }
}

TEST_F(RouterStatusTest, NothingIsSentAgainAfterAFailure) {
    (void)answered(Answer::with(503));
    (void)answered(Answer::failure(Transport::truncated));

    phone->advance(std::chrono::hours(1));

    EXPECT_EQ(transport().requests().size(), 2U);
    EXPECT_EQ(transport().openCount(), 0U);
}

} // namespace
} // namespace quorvane
