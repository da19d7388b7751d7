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

TEST(RequestLog, RecordsHaveNumbersThatGoOnWhenItIsCleared) {
    RequestLog log(nullptr);
    const auto visited = [&](std::size_t number, std::size_t most) {
        std::string text;
        log.visit(number, most, [&](std::size_t position, const RequestRecord& record) {
            text += std::to_string(position) + record.target;
        });
        return text;
    };
    EXPECT_EQ(visited(0, 10), "");
    for (const char* target : {"/a", "/b", "/c"}) {
        log.add({.target = target});
    }
    EXPECT_EQ(visited(0, 10), "1/a2/b3/c");
    EXPECT_EQ(visited(0, 2), "2/b3/c");
    EXPECT_EQ(visited(2, 10), "3/c");
    EXPECT_EQ(visited(3, 10), "");
    EXPECT_EQ(visited(99, 10), "");
    log.clear();
    log.add({.target = "/d"});
    EXPECT_EQ(visited(0, 10), "4/d");
    EXPECT_FALSE(log.record(3));
    ASSERT_TRUE(log.record(4));
    EXPECT_EQ(log.record(4)->target, "/d");
    EXPECT_FALSE(log.record(5));
}

TEST(RequestLog, TheOldestOfTooManyAreForgotten) {
    RequestLog log(nullptr);
    for (int i = 0; i < 10'001; ++i) {
        log.add({.body = "x"});
    }
    EXPECT_EQ(log.records().size(), 10'000U);
    EXPECT_FALSE(log.record(1));
    EXPECT_TRUE(log.record(2));
    EXPECT_TRUE(log.record(10'001));
}

} // namespace
} // namespace quorvane::sandbox::test
