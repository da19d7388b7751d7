#include <gtest/gtest.h>

#include "sandbox/Fault.h"

namespace quorvane::sandbox::test {
namespace {

using Kind = Fault::Kind;
using namespace std::chrono_literals;

Fault read(const std::string& text) {
    auto fault = Fault::parse(text);
    EXPECT_TRUE(std::holds_alternative<Fault>(fault)) << std::get<std::string>(fault);
    return std::get<Fault>(fault);
}

std::string problem(const std::string& text) {
    const auto fault = Fault::parse(text);
    return std::holds_alternative<std::string>(fault) ? std::get<std::string>(fault) : "";
}

TEST(FaultText, EveryKindHasItsWord) {
    EXPECT_EQ(read("/a:drop").kind, Kind::drop);
    EXPECT_EQ(read("/a:reset").kind, Kind::reset);
    EXPECT_EQ(read("/a:truncate-body").kind, Kind::truncateBody);
    EXPECT_EQ(read("/a:truncate-headers").kind, Kind::truncateHeaders);
    EXPECT_EQ(read("/a:status=503").kind, Kind::status);
    EXPECT_EQ(read("/a:invalid-json").kind, Kind::invalidJSON);
    EXPECT_EQ(read("/a:expired-token").kind, Kind::expiredToken);
    EXPECT_EQ(read("/a:lost-reply").kind, Kind::lostReply);
    EXPECT_EQ(read("/a:delay=1ms").kind, Kind::none);
}

TEST(FaultText, PartsComeInAnyOrder) {
    const Fault fault = read("/locations/find:count=2:skip=3:delay=2s:status=599");
    EXPECT_EQ(fault.path, "/locations/find");
    EXPECT_EQ(fault.status, 599);
    EXPECT_EQ(fault.delay, 2000ms);
    EXPECT_EQ(fault.count, 2);
    EXPECT_EQ(fault.skip, 3);
    EXPECT_EQ(fault.name(), "status=599 delay=2000ms");
    EXPECT_FALSE(read("*:drop").count);
    EXPECT_EQ(read("*:truncate-body=7").bytes, 7U);
}

TEST(FaultText, WhatIsWrongIsSaidInOneSentence) {
    EXPECT_EQ(problem("config:drop"),
              R"(The fault "config:drop" cannot be read: it must begin with a path such as "/config", or with "*".)");
    EXPECT_EQ(problem("/a"), R"(The fault "/a" cannot be read: it does not say what goes wrong.)");
    EXPECT_EQ(problem("/a:count=1"), R"(The fault "/a:count=1" cannot be read: it does not say what goes wrong.)");
    EXPECT_EQ(problem("/a:explode"), R"(The fault "/a:explode" cannot be read: "explode" is no part of a fault.)");
    EXPECT_EQ(problem("/a:"), R"(The fault "/a:" cannot be read: "" is no part of a fault.)");
    EXPECT_EQ(problem("/a:drop:reset"),
              R"(The fault "/a:drop:reset" cannot be read: only one thing can go wrong at a time, besides a delay.)");
    EXPECT_EQ(problem("/a:drop=1"), R"(The fault "/a:drop=1" cannot be read: "drop" takes no value.)");
    EXPECT_EQ(problem("/a:status=199"),
              R"(The fault "/a:status=199" cannot be read: "status" needs a whole number from 200 to 999.)");
}

TEST(FaultText, ValuesOutOfBoundsAreRefused) {
    for (const char* text : {"/a:status", "/a:status=", "/a:status=1000", "/a:status=5x", "/a:drop:count=0",
                             "/a:drop:count=", "/a:drop:count=-1", "/a:drop:skip=-1", "/a:truncate-body=-1",
                             "/a:truncate-body=", "/a:delay", "/a:delay=5", "/a:delay=0ms", "/a:delay=ms",
                             "/a:delay=3601s", "/a:delay=1.5s", ""}) {
        EXPECT_NE(problem(text), "") << text;
    }
    EXPECT_EQ(read("/a:delay=3600s").delay, 1h);
}

TEST(FaultText, AFaultCanBeWrittenDownAndReadAgain) {
    for (const char* text :
         {"*:drop", "/a:reset", "/a:truncate-body", "/a:truncate-body=7", "/a:truncate-headers=0", "/a:status=503",
          "/a*:invalid-json:delay=500ms", "/a:expired-token:count=2", "/a:lost-reply:skip=3", "/a:delay=1ms",
          "/tasks/*:status=999:delay=2000ms:count=4:skip=5"}) {
        EXPECT_EQ(read(text).text(), text);
    }
    EXPECT_EQ(read("/a:skip=0:delay=2s:drop").text(), "/a:drop:delay=2000ms");
}

TEST(FaultText, AStarMatchesWhatBeginsLikeThePath) {
    EXPECT_TRUE(read("*:drop").matches("/config"));
    EXPECT_TRUE(read("/tasks/*:drop").matches("/tasks/k/responses"));
    EXPECT_FALSE(read("/tasks/*:drop").matches("/tasks"));
    EXPECT_FALSE(read("/tasks:drop").matches("/tasks/k"));
}

TEST(FaultText, FaultsHappenInTheOrderInWhichTheyWereAdded) {
    FaultList faults;
    faults.add(read("/a:status=500:count=1"));
    faults.add(read("/a:status=501:count=1"));
    faults.add(read("/b:status=502"));

    EXPECT_EQ(faults.take("/b")->status, 502);
    EXPECT_EQ(faults.take("/a")->status, 500);
    EXPECT_EQ(faults.take("/a")->status, 501);
    EXPECT_FALSE(faults.take("/a"));
    EXPECT_EQ(faults.take("/b")->status, 502);
}

TEST(FaultText, AFaultIsRemovedByItsNumber) {
    FaultList faults;
    const int first = faults.add(read("/a:status=500"));
    const int second = faults.add(read("/a:status=501:count=2"));
    EXPECT_NE(first, second);

    EXPECT_TRUE(faults.remove(first));

    EXPECT_FALSE(faults.remove(first));
    EXPECT_EQ(faults.take("/a")->status, 501);
    ASSERT_EQ(faults.all().size(), 1U);
    EXPECT_EQ(faults.all().front().first, second);
    EXPECT_EQ(faults.all().front().second.text(), "/a:status=501:count=1");
    faults.clear();
    EXPECT_TRUE(faults.all().empty());
    EXPECT_GT(faults.add(read("/a:drop")), second);
}

} // namespace
} // namespace quorvane::sandbox::test
