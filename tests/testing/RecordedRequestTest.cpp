#include <gtest/gtest.h>

#include "testing/RecordedRequest.h"

namespace quorvane::testing {
namespace {

std::optional<RecordedRequest> recorded(const std::string& url) {
    return RecordedRequest::read(platform::HTTPRequest{.url = url});
}

TEST(RecordedRequestTest, TheAddressIsTakenApartAndDecoded) {
    const auto request = recorded("https://127.0.0.1:4001/v2/t%C3%A4sk%2F1/x?q=a%20b+c&empty=&flag&q%3D=%26#end");

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->scheme, "https");
    EXPECT_EQ(request->authority, "127.0.0.1:4001");
    EXPECT_EQ(request->path, "/v2/t\xC3\xA4sk/1/x");
    EXPECT_EQ(request->query,
              (std::map<std::string, std::string>{{"q", "a b c"}, {"empty", ""}, {"flag", ""}, {"q=", "&"}}));
}

TEST(RecordedRequestTest, AnAddressWithoutAPathAsksForTheRoot) {
    EXPECT_EQ(recorded("http://localhost")->path, "/");
    EXPECT_EQ(recorded("http://localhost?a=1")->query.at("a"), "1");
    EXPECT_EQ(recorded("http://localhost?a=1")->authority, "localhost");
}

TEST(RecordedRequestTest, OfARepeatedParameterTheLastCounts) {
    EXPECT_EQ(recorded("http://localhost/?a=1&a=2")->query.at("a"), "2");
}

TEST(RecordedRequestTest, WhatIsNoEncodedAddressIsNoRequest) {
    for (const char* url : {"", "/path", "localhost/path", "ftp://localhost/", "http:///path", "http://:80/",
                            "http://localhost/a b", "http://localhost/\xC3\xA4", "http://localhost/\n"}) {
        EXPECT_FALSE(recorded(url).has_value()) << url;
    }
}

TEST(RecordedRequestTest, APercentThatIsNoEscapeStays) {
    EXPECT_EQ(percentDecoded("100%"), "100%");
    EXPECT_EQ(percentDecoded("%4"), "%4");
    EXPECT_EQ(percentDecoded("%zz%41%4a%4A"), "%zzAJJ");
    EXPECT_EQ(percentDecoded("a+b"), "a+b");
}

TEST(RecordedRequestTest, AHeaderIsFoundWhateverItsLettersCase) {
    const auto request = RecordedRequest::read(platform::HTTPRequest{
        .url = "http://localhost/",
        .headers = {{"X-Device-Type", "a"}, {"Authorization", "first"}, {"authorization", "second"}}});

    EXPECT_EQ(request->header("x-device-type"), "a");
    EXPECT_EQ(request->header("AUTHORIZATION"), "first");
    EXPECT_EQ(request->header("X-Device"), std::nullopt);
}

} // namespace
} // namespace quorvane::testing
