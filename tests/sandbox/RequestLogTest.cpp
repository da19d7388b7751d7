#include <gtest/gtest.h>

#include "sandbox/RequestLog.h"

namespace quorvane::sandbox::test {
namespace {

TEST(RequestLog, OnlyTheNewestOfManyLargeBodiesAreKept) {
    RequestLog log(nullptr);
    const std::string body(std::size_t{16} << 20U, 'x');
    for (int i = 0; i < 6; ++i) {
        log.add({.target = "/" + std::to_string(i), .body = body});
    }

    const auto records = log.records();

    ASSERT_EQ(records.size(), 6U);
    EXPECT_EQ(records[0].target, "/0");
    EXPECT_EQ(records[1].body, "");
    EXPECT_EQ(records[2].body, body);
    EXPECT_EQ(records[5].body, body);
}

TEST(RequestLog, AfterItWasClearedThereIsRoomAgain) {
    RequestLog log(nullptr);
    const std::string body(std::size_t{40} << 20U, 'x');
    log.add({.body = body});
    log.clear();
    log.add({.body = body});

    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records().front().body, body);
}

TEST(RequestLog, TheListenerSeesWhatTheLogForgets) {
    std::size_t bytes = 0;
    RequestLog log([&](const RequestRecord& record) { bytes += record.body.size(); });
    const std::string body(std::size_t{40} << 20U, 'x');
    log.add({.body = body});
    log.add({.body = body});
    EXPECT_EQ(bytes, 2 * body.size());
}

} // namespace
} // namespace quorvane::sandbox::test
