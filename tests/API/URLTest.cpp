#include <gtest/gtest.h>

#include "API/URL.h"

namespace quorvane {
namespace {

std::string withQuery(const std::vector<std::pair<std::string, std::string>>& items) {
    return URL::parse("http://localhost:3000/a")->withQuery(items).text();
}

TEST(URL, ParsesAnAbsoluteAddressOfAService) {
    for (const char* const text :
         {"http://localhost:3000", "https://api.example.com/v2", "http://127.0.0.1", "http://[::1]:4001",
          "http://[::1]", "https://a-b.c_d~e", "http://h/", "http://h/%20x", "http://h:65535"}) {
        ASSERT_TRUE(URL::parse(text)) << text;
        EXPECT_EQ(URL::parse(text)->text(), text);
    }
}

TEST(URL, ATextThatIsNoSuchAddressIsNone) {
    for (const char* const text : {"",
                                   "localhost:3000",
                                   "http://",
                                   "http:///path",
                                   "ftp://host",
                                   "http://host name",
                                   "http://host:",
                                   "http://host:0",
                                   "http://host:65536",
                                   "http://host:80x",
                                   "http://:80",
                                   "http://host/a b",
                                   "http://host/?q",
                                   "http://host/#f",
                                   "http://host?q",
                                   "http://user@host",
                                   "http://[::1",
                                   "http://[]",
                                   "http://host/\x01",
                                   "http://host/\xC3\xA9",
                                   " http://host"}) {
        EXPECT_FALSE(URL::parse(text)) << text;
    }
}

TEST(URL, AppendsAPathWithExactlyOneSlash) {
    EXPECT_EQ(URL::parse("https://h/v2")->appending("/config").text(), "https://h/v2/config");
    EXPECT_EQ(URL::parse("https://h/v2/")->appending("/config").text(), "https://h/v2/config");
    EXPECT_EQ(URL::parse("https://h/v2")->appending("config").text(), "https://h/v2/config");
    EXPECT_EQ(URL::parse("https://h")->appending("/tasks/k/responses").text(), "https://h/tasks/k/responses");
}

TEST(URL, AQueryWithoutItemsLeavesTheAddressAsItIs) {
    EXPECT_EQ(withQuery({}), "http://localhost:3000/a");
}

TEST(URL, AQueryKeepsTheOrderOfItsItems) {
    EXPECT_EQ(withQuery({{"b", "2"}, {"a", "1"}}), "http://localhost:3000/a?b=2&a=1");
}

TEST(URL, AQueryEncodesNamesAndValues) {
    EXPECT_EQ(withQuery({{"q", "a b"}}), "http://localhost:3000/a?q=a%20b");
    EXPECT_EQ(withQuery({{"q", "a+b"}}), "http://localhost:3000/a?q=a%2Bb");
    EXPECT_EQ(withQuery({{"q", "a&b=c"}}), "http://localhost:3000/a?q=a%26b%3Dc");
    EXPECT_EQ(withQuery({{"q", "100%"}}), "http://localhost:3000/a?q=100%25");
    EXPECT_EQ(withQuery({{"q",
                          "\xC4\x8C"
                          "esk\xC3\xBD"}}),
              "http://localhost:3000/a?q=%C4%8Cesk%C3%BD");
    EXPECT_EQ(withQuery({{"q", ""}}), "http://localhost:3000/a?q=");
    EXPECT_EQ(withQuery({{"x y", "1"}}), "http://localhost:3000/a?x%20y=1");
    EXPECT_EQ(withQuery({{"q", "myApp://callback"}}), "http://localhost:3000/a?q=myApp%3A%2F%2Fcallback");
    EXPECT_EQ(withQuery({{"q", std::string("\0\r\n", 3)}}), "http://localhost:3000/a?q=%00%0D%0A");
}

TEST(URL, UnreservedCharactersStayAsTheyAre) {
    EXPECT_EQ(percentEncoded("azAZ09-._~"), "azAZ09-._~");
}

TEST(URL, AValueInAPathStaysInsideItsComponent) {
    EXPECT_EQ(pathComponent("t1"), "t1");
    EXPECT_EQ(pathComponent("a/b"), "a%2Fb");
    EXPECT_EQ(pathComponent("a?b#c"), "a%3Fb%23c");
    EXPECT_EQ(pathComponent("."), "%2E");
    EXPECT_EQ(pathComponent(".."), "%2E%2E");
    EXPECT_EQ(pathComponent("../x"), "..%2Fx");
    EXPECT_EQ(pathComponent("..."), "...");
    EXPECT_EQ(pathComponent("a\r\nHost: x"), "a%0D%0AHost%3A%20x");
}

} // namespace
} // namespace quorvane
