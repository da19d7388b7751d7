#include <string>

#include <gmock/gmock.h>

#include "support/Browser.h"
#include "tools/ReplayTest.h"

namespace quorvane::tool {
namespace {

using ::testing::IsEmpty;

/// The page of the invented ride, as its reader uses it.
class ReplayPageBrowserTest : public ReplayTest {
protected:
    void SetUp() override {
        ReplayTest::SetUp();
        const std::string page = (scratch / "ride.html").string();
        const Ended ended = replayRide({"--places", places(), "--format", "html", "--output", page});
        ASSERT_EQ(ended.exitStatus, 0) << ended.errors;
        browser.show(1280, 1000, "light");
        browser.open("file://" + page);
        ASSERT_TRUE(browser.comesTrue("document.querySelector('#moment').textContent !== ''"));
    }

    void TearDown() override { EXPECT_THAT(browser.complaints(), IsEmpty()); }

    [[nodiscard]] std::string moment() { return browser.text("document.querySelector('#moment').textContent"); }
    [[nodiscard]] int count(const std::string& selector) {
        return std::stoi(browser.text("document.querySelectorAll('" + selector + "').length"));
    }
    [[nodiscard]] std::string position() {
        return browser.text("['cx', 'cy'].map((name) => document.querySelector('#here').getAttribute(name)).join()");
    }

    quorvane::testing::Browser browser;
};

TEST_F(ReplayPageBrowserTest, OpensAtItsEndWithAllThatHappened) {
    EXPECT_EQ(count("#map .later"), 0);
    EXPECT_GT(count("#map [data-t]"), 56);
}

TEST_F(ReplayPageBrowserTest, TheSliderShowsWhatHadHappenedByThen) {
    const std::string end = moment();
    const std::string lastPosition = position();

    browser.click("#range"); // in the middle

    const std::string half = moment();
    EXPECT_LT(half, end);
    EXPECT_NE(position(), lastPosition);
    const int laterAtHalf = count("#map .later");
    EXPECT_GT(laterAtHalf, 0);

    browser.press("Home", 36);

    EXPECT_LT(moment(), half);
    EXPECT_GT(count("#map .later"), laterAtHalf);

    browser.press("End", 35);

    EXPECT_EQ(count("#map .later"), 0);
    EXPECT_EQ(moment(), end);
    EXPECT_EQ(position(), lastPosition);
}

TEST_F(ReplayPageBrowserTest, AnEventInTheListTakesTheMapToItsMoment) {
    const std::string end = moment();

    browser.click("[data-go]");

    const std::string first = browser.text("document.querySelector('[data-go] span').textContent.replace('T', ' ')");
    EXPECT_LT(moment(), end);
    EXPECT_EQ(moment().substr(0, 19), first.substr(0, 19));
    EXPECT_GT(count("#map .later"), 0);
}

TEST_F(ReplayPageBrowserTest, NothingIsWiderThanAPhone) {
    for (const char* const scheme : {"light", "dark"}) {
        browser.show(360, 740, scheme);
        EXPECT_TRUE(browser.is("document.documentElement.scrollWidth <= 360")) << scheme;
    }
}

} // namespace
} // namespace quorvane::tool
