#include "sandbox/TaskFixture.h"
#include "support/Browser.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// One white pixel.
constexpr auto pixelURL =
    "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGP4DwAB"
    "AQEAsTj2FAAAAABJRU5ErkJggg==";

class BrowserTest : public TaskTest {
protected:
    void startWith(SandboxOptions options) {
        TaskTest::startWith(std::move(options));
        openPage();
    }

    void SetUp() override { startWith({}); }

    void TearDown() override { EXPECT_THAT(browser.complaints(), IsEmpty()); }

    void openPage() {
        browser.show(1280, 1000, "light");
        browser.open("http://localhost:" + std::to_string(sandbox->dataPort()) + "/");
        expectSoon("document.querySelector('#status').classList.contains('live')");
    }

    void expectSoon(const std::string& expression) {
        EXPECT_TRUE(browser.comesTrue(expression)) << expression << "\n" << browser.text("document.body.innerText");
    }

    /// Picks a task or place by its key or name.
    void find(const std::string& name) { browser.enter("#find", name); }

    [[nodiscard]] std::string textOf(const std::string& selector) {
        return browser.text("document.querySelector('" + selector + "').innerText");
    }

    [[nodiscard]] QVTaskResponse pixelPhoto() const {
        QVTaskResponse response = responseTo(tour, 10);
        response.base64 = pixelURL;
        return response;
    }

    /// The tour to its end, by the shortest way.
    void walkTour() {
        claimTour();
        ASSERT_EQ(respond(pick(0, {2})).status(), 200);
        ASSERT_EQ(respond(pick(1, {0})).status(), 200);
        ASSERT_EQ(respond(pixelPhoto()).status(), 200);
    }

    quorvane::testing::Browser browser;
};

TEST_F(BrowserTest, TheMapShowsEveryPlaceAndTaskAndItsScale) {
    EXPECT_EQ(browser.text("document.querySelectorAll('#places path').length"), "60");
    EXPECT_EQ(browser.text("document.querySelectorAll('#tasks path.generated').length > 10"), "true");
    EXPECT_EQ(browser.text("document.querySelector('#map').getAttribute('aria-label').startsWith('60 places and')"),
              "true");
    EXPECT_TRUE(browser.is("/^[125]0* k?m$/.test(document.querySelector('#scale-text').textContent)"));
    EXPECT_TRUE(
        browser.is("[...document.querySelectorAll('#places path')].every((path) => {"
                   "  const a = path.getBoundingClientRect(); const b = map.getBoundingClientRect();"
                   "  return a.left >= b.left && a.right <= b.right && a.top >= b.top && a.bottom <= b.bottom; })"))
        << "all places lie within the map";
}

TEST_F(BrowserTest, TheScaleIsTrue) {
    // Two places, as far apart on the screen as the scale says that they are on the earth.
    const std::string metres = browser.text(
        "(() => { const dots = document.querySelectorAll('#places path');"
        "  const at = (dot) => { const b = dot.getBoundingClientRect(); return [b.x + b.width / 2, b.y + b.height / "
        "2]; };"
        "  const [a, b] = [at(dots[0]), at(dots[30])];"
        "  const text = document.querySelector('#scale-text').textContent;"
        "  const length = parseFloat(text) * (text.endsWith('km') ? 1000 : 1);"
        "  const bar = document.querySelector('#scale-bar').getBoundingClientRect().width;"
        "  return Math.hypot(a[0] - b[0], a[1] - b[1]) / bar * length; })()");
    std::vector<platform::Coordinate> places;
    const auto reply = json::readExactly(get("/locations/find?lat=46.05&lng=14.5&rad=5000", access).body());
    const auto& data = std::get<AnyCodable::Dictionary>(reply.value).at("data");
    for (const AnyCodable& place : std::get<AnyCodable::List>(data.value)) {
        const auto& members = std::get<AnyCodable::Dictionary>(place.value);
        places.push_back({.latitude = std::get<double>(members.at("latitude").value),
                          .longitude = std::get<double>(members.at("longitude").value)});
    }
    const double expected = platform::distance(places.at(0), places.at(30));
    EXPECT_NEAR(std::stod(metres), expected, expected * 0.01 + 10);
}

TEST_F(BrowserTest, ATaskIsFoundByItsKeyAndShownWithItsLimit) {
    find(tourKey);

    expectSoon("spot.innerText.includes('task-00000')");
    EXPECT_THAT(textOf("#spot"), HasSubstr("11 questions · claimed within 161 m"));
    EXPECT_TRUE(
        browser.is("[...document.querySelectorAll('.limit')].some((c) => Math.abs(c.r.baseVal.value - 161) < 1)"));

    find("no such task");
    EXPECT_EQ(browser.text("document.querySelector('#find').validationMessage"), "There is none.");
}

TEST_F(BrowserTest, APointOfTheMapIsPickedByAClick) {
    find(tourKey);
    expectSoon("spot.innerText.includes('task-00000')");
    for (int i = 0; i < 3; ++i) {
        browser.click("#zoom-in");
    }

    browser.drag("#map", -100, -100, 0, 0);
    EXPECT_EQ(textOf("#spot"), "Pick a point of the map.");
    browser.drag("#map", 3, -3, 0, 0);
    EXPECT_THAT(textOf("#spot"), HasSubstr("task-00000"));
}

TEST_F(BrowserTest, TheMapIsMovedByDraggingIt) {
    find(tourKey);
    expectSoon("spot.innerText.includes('task-00000')");
    const std::string middle =
        "(() => { const a = document.querySelector('#selection').getBoundingClientRect();"
        " const b = map.getBoundingClientRect();"
        " return Math.round(a.x + a.width / 2 - b.x - b.width / 2) + ' ' +"
        "        Math.round(a.y + a.height / 2 - b.y - b.height / 2); })()";
    EXPECT_EQ(browser.text(middle), "0 0");

    browser.drag("#map", 0, 0, 80, -40);

    EXPECT_EQ(browser.text(middle), "80 -40");
    EXPECT_THAT(textOf("#spot"), HasSubstr("task-00000")) << "a drag picks nothing";
}

TEST_F(BrowserTest, TheMapZoomsAndComesBack) {
    const std::string everything = browser.text("map.getAttribute('viewBox')");
    browser.click("#zoom-in");
    EXPECT_NE(browser.text("map.getAttribute('viewBox')"), everything);
    browser.click("#zoom-all");
    EXPECT_EQ(browser.text("map.getAttribute('viewBox')"), everything);
    for (int i = 0; i < 40; ++i) {
        browser.click("#zoom-in");
    }
    EXPECT_TRUE(browser.is("map.viewBox.baseVal.width >= 39"));
}

TEST_F(BrowserTest, ClaimsAndAnswersArriveWithTheirPhotos) {
    EXPECT_EQ(textOf("#claims"), "Nobody has claimed a task yet.");

    walkTour();

    expectSoon("claims.querySelector('.badge.completed')");
    expectSoon("claims.querySelectorAll('.answers li').length === 3");
    EXPECT_THAT(textOf("#claims"), AllOf(HasSubstr("A tour of"), HasSubstr("Outside its hours"), HasSubstr("user"),
                                         HasSubstr("A hot drink at the till"), HasSubstr("earned")));
    expectSoon("claims.querySelector('img').complete && claims.querySelector('img').naturalWidth === 1");
    expectSoon("document.querySelector('#tasks path.generated') && document.querySelector('#users .user')");
    EXPECT_EQ(browser.text("document.querySelector('#users text').textContent"), "user");
}

TEST_F(BrowserTest, AClaimedTaskLooksClaimedOnTheMap) {
    EXPECT_FALSE(browser.is("document.querySelector('#tasks path.running')"));
    claimTour();
    expectSoon("document.querySelector('#tasks path.running')");
}

TEST_F(BrowserTest, TheLogShowsEachRequestAndWhatWasSent) {
    EXPECT_EQ(claim().status(), 200);
    EXPECT_EQ(claim("none").status(), 404);
    expectSoon("log.querySelector('.failure .target')");
    EXPECT_EQ(textOf("#log li:first-child .target"), "POST /tasks");
    EXPECT_EQ(textOf("#log li:first-child .status"), "404");

    browser.click("#log li:first-child summary");

    expectSoon("log.querySelector('pre').textContent.includes('{\"key\":\"none\"}')");
    EXPECT_THAT(textOf("#log pre"), HasSubstr("Authorization: Bearer " + access));
    browser.click("#log-failures");
    EXPECT_EQ(browser.text("[...log.children].filter((row) => row.offsetHeight > 0).length"), "1");
}

TEST_F(BrowserTest, FaultsAreSwitchedOnAndOff) {
    browser.type("#fault-path", "/config");
    browser.choose("#fault-kind", "drop");
    EXPECT_FALSE(browser.is("document.querySelector('#fault-value-label').offsetHeight > 0"));
    browser.type("#fault-count", "7");
    browser.click("#fault-form button");
    expectSoon("faults.querySelector('code').textContent === '/config:drop:count=7'");
    RawConnection connection(sandbox->dataPort());
    connection.send("GET " + std::string(configTarget) + " HTTP/1.1\r\nAuthorization: Bearer " + access + "\r\n\r\n");
    EXPECT_EQ(connection.readToEnd().bytes, "");
    expectSoon("faults.querySelector('code').textContent === '/config:drop:count=6'");

    browser.click("#faults button");

    expectSoon("faults.children.length === 0");
    EXPECT_EQ(get(configTarget, access).status(), 200);
}

TEST_F(BrowserTest, AStatusAndADelayAreSetInTheForm) {
    browser.type("#fault-path", "/config");
    browser.type("#fault-value", "418");
    browser.type("#fault-delay", "5");
    browser.click("#fault-form button");
    expectSoon("faults.querySelector('code').textContent === '/config:status=418:delay=5ms'");
    expectError(get(configTarget, access), 418, "fault");
}

TEST_F(BrowserTest, AFaultThatCannotBeReadIsToldInASentence) {
    browser.type("#fault-path", "config");
    browser.click("#fault-form button");
    expectSoon("document.querySelector('#fault-problem').textContent.includes('must begin with a path')");
    EXPECT_EQ(browser.complaints().size(), 1U) << "the browser's own line about the status 400";
}

TEST_F(BrowserTest, MarkupInTextsIsShownAsText) {
    const std::string markup = "<img src=x onerror=\"window.isRun=true\"><script>window.isRun=true</script>";
    const AnyCodable::Dictionary question{{"key", "q"}, {"type", "openEnded"}, {"question", AnyCodable(markup)}};
    startWith({.tasks = {json::writeExactly(AnyCodable::Dictionary{
                   {"key", AnyCodable("own" + markup)},
                   {"title", AnyCodable(markup)},
                   {"location", AnyCodable::Dictionary{{"latitude", 46.05}, {"longitude", 14.5}}},
                   {"questions", AnyCodable::List{question}},
                   {"rewards", AnyCodable::List{AnyCodable::Dictionary{
                                   {"message", AnyCodable::Dictionary{{"body", AnyCodable(markup)}}}}}}})}});
    access = signInAs("%3Cimg%20src=x%20onerror=window.isRun=true%3E");
    searchFrom(SandboxOptions::defaultCenter);
    const auto task = json::decode<QVTask>(claim("own" + markup).body());
    QVTaskResponse response = responseTo(task, 0);
    response.userAnswer = markup;
    ASSERT_EQ(send("/tasks/own%3Cimg%20src%3Dx%20onerror%3D%22window.isRun%3Dtrue%22%3E%3Cscript%3Ewindow.isRun%3D"
                   "true%3C%2Fscript%3E/responses",
                   json::encode(response))
                  .status(),
              200);
    std::ignore = ask(sandbox->dataPort(), "GET /<img/src=x/onerror=window.isRun=true> HTTP/1.1\r\n\r\n");
    sandbox->addFault(fault("/<script>window.isRun=true</script>:drop"));

    expectSoon("claims.innerText.includes('<script>') && faults.innerText.includes('<script>')");
    expectSoon("log.innerText.includes('<img/src')");
    find("own" + markup);
    expectSoon("spot.innerText.includes('<script>')");

    EXPECT_FALSE(browser.is("window.isRun"));
    EXPECT_EQ(browser.text("document.querySelectorAll('main img, main script').length"), "0");
    EXPECT_THAT(textOf("#claims"), HasSubstr("<img src=x onerror=window.isRun=true>"));
    EXPECT_THAT(textOf("#claims .rewards"), HasSubstr(markup));
}

TEST_F(BrowserTest, NothingIsLoadedFromElsewhere) {
    walkTour();
    expectSoon("claims.querySelector('img') && claims.querySelector('img').complete");
    EXPECT_EQ(browser.text("performance.getEntriesByType('resource').filter((one) => "
                           "!one.name.startsWith(location.origin + '/')).length"),
              "0");
    EXPECT_TRUE(browser.is("performance.getEntriesByType('resource').length > 5"));
}

TEST_F(BrowserTest, AnotherRunOfTheServiceIsShownAnew) {
    walkTour();
    expectSoon("claims.querySelector('.badge.completed')");
    const int port = sandbox->dataPort();
    sandbox.reset();
    expectSoon("!document.querySelector('#status').classList.contains('live')");
    EXPECT_EQ(textOf("#status"), "The sandbox does not answer; trying again.");

    TaskTest::startWith({.dataPort = port, .seed = 2, .around = {{.latitude = 10, .longitude = 20}}});

    expectSoon("document.querySelector('#status').classList.contains('live')");
    EXPECT_EQ(textOf("#claims"), "Nobody has claimed a task yet.");
    find("task-00000");
    expectSoon("spot.innerText.includes('10.0')");
    EXPECT_FALSE(browser.complaints().empty()) << "the browser's own lines about the service that was away";
}

TEST_F(BrowserTest, ItFitsAPhoneAndADesktopInLightAndDark) {
    walkTour();
    expectSoon("claims.querySelector('img') && claims.querySelector('img').complete");
    find("task-00000");
    // The contrast of every text that stands on its own with what is behind it, as WCAG 2 measures it.
    const std::string least = R"((() => {
        const parse = (text) => text.match(/[\d.]+/g).map(Number);
        const light = (color) => {
            const part = parse(color).slice(0, 3).map((v) => v / 255)
                .map((v) => v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4);
            return 0.2126 * part[0] + 0.7152 * part[1] + 0.0722 * part[2];
        };
        const ground = (element) => {
            for (let one = element; one; one = one.parentElement) {
                const color = getComputedStyle(one).backgroundColor;
                if ((parse(color)[3] ?? 1) > 0) { return color; }
            }
        };
        let least = 21;
        for (const element of document.querySelectorAll('main *, header *')) {
            const hasText = [...element.childNodes].some((node) => node.nodeType === 3 && node.data.trim() !== '');
            if (hasText && element.offsetHeight > 0) {
                const both = [light(getComputedStyle(element).color), light(ground(element))].sort((a, b) => b - a);
                least = Math.min(least, (both[0] + 0.05) / (both[1] + 0.05));
            }
        }
        return least;
    })())";
    std::vector<std::string> grounds;
    for (const char* scheme : {"light", "dark"}) {
        for (const int width : {360, 1280}) {
            SCOPED_TRACE(scheme + std::string(" ") + std::to_string(width));
            browser.show(width, 800, scheme);
            expectSoon("window.innerWidth === " + std::to_string(width));
            EXPECT_TRUE(browser.is("document.documentElement.scrollWidth <= window.innerWidth"));
            EXPECT_TRUE(
                browser.is("[...document.querySelectorAll('main section *')].every((element) => "
                           "element.closest('svg, datalist, select, .log') || element.offsetHeight === 0 || "
                           "element.getBoundingClientRect().right <= "
                           "element.closest('section').getBoundingClientRect().right)"))
                << "nothing sticks out of its card";
            EXPECT_GE(std::stod(browser.text(least)), 4.5);
            grounds.push_back(browser.text("getComputedStyle(document.documentElement).backgroundColor"));
        }
    }
    EXPECT_EQ(grounds[0], grounds[1]);
    EXPECT_NE(grounds[0], grounds[2]);
}

} // namespace
} // namespace quorvane::sandbox::test
