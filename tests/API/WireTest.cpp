#include <gmock/gmock.h>

#include "Facade/Quorvane.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "Platform/SecureRandom.h"
#include "support/RawServer.h"
#include "support/ScratchDirectory.h"
#include "testing/SimulatedDevice.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;

/// The bytes 0, 1, 2, ... one after the other.
class CountedRandom : public platform::SecureRandom {
public:
    [[nodiscard]] std::vector<std::uint8_t> bytes(std::size_t count) override {
        std::vector<std::uint8_t> result(count);
        for (std::uint8_t& byte : result) {
            byte = next++;
        }
        return result;
    }

private:
    std::uint8_t next = 0;
};

/// The native platform with a device and randomness that are the same everywhere.
class FixedPlatform : public platform::NativePlatform {
public:
    explicit FixedPlatform(platform::NativeOptions options) : NativePlatform(std::move(options)) {
        fixedDevice.setHardwareIdentifier("iPhone12,1");
        fixedDevice.setSystemVersion("16.4.1");
        fixedDevice.setIdentifierForVendor("0F8FAD5B-D9CB-469F-A165-70867728950E");
    }

    [[nodiscard]] platform::Device& device() override { return fixedDevice; }
    [[nodiscard]] platform::SecureRandom& random() override { return fixedRandom; }

private:
    quorvane::testing::SimulatedDevice fixedDevice;
    CountedRandom fixedRandom;
};

/// The head of a request of the library: its line, and the headers in their order.
std::string head(const std::string& line, const std::string& host, const std::string& more = {}) {
    return line + "\r\n" + "Host: " + host +
           "\r\n"
           "Accept: application/json\r\n"
           "Content-Type: application/json\r\n"
           "X-Quorvane-Device-Make: Apple\r\n"
           "X-Quorvane-Device-Model: iPhone 11\r\n"
           "X-Quorvane-Device-OS: 16.4.1\r\n"
           "X-Quorvane-Device-Type: iOS\r\n"
           "X-Quorvane-SDK-Version: 0.0.2\r\n" +
           more + "\r\n";
}

constexpr const char* data3000 = "localhost:3000";
constexpr const char* identity4001 = "localhost:4001";
constexpr const char* plain = "Accept-Encoding: identity\r\n";
constexpr const char* authorized = "Authorization: Bearer stored-token\r\nAccept-Encoding: identity\r\n";

/// The bytes that each call puts on the wire, over a socket that knows nothing of the library.
class WireTest : public ::testing::Test {
protected:
    WireTest() {
        platform::NativeOptions options;
        options.home = home.path();
        options.connectTo = {{3000, data.port()}, {4001, identity.port()}};
        options.output = [](std::string_view) {};
        phone = std::make_shared<FixedPlatform>(std::move(options));
        platform::install(phone);
    }
    ~WireTest() override { platform::install(nullptr); }

    [[nodiscard]] bool runUntil(const std::function<bool()>& done) {
        return phone->mainQueue().runUntil(done, std::chrono::seconds(60));
    }

    /// Initializes with tokens that are valid.
    void initializeSignedIn() {
        auto& preferences = phone->preferences();
        preferences.setString("quorvane_access_token", "Bearer stored-token");
        preferences.setString("quorvane_refresh_token", "stored-refresh");
        preferences.setInteger("qourvane_access_token_expiry", 9'999'999'999);
        Quorvane::initialize("UVZMT0NM-the-key");
    }

    [[nodiscard]] static std::string ok(const std::string& body) {
        return quorvane::testing::RawServer::answer(200, body);
    }

    const quorvane::testing::ScratchDirectory home;
    quorvane::testing::RawServer data{{{ok(R"({"count":0,"data":[]})")}}};
    quorvane::testing::RawServer identity{[](const std::string& request) -> quorvane::testing::RawAnswer {
        if (request.starts_with("GET /authorize")) {
            const std::size_t state = request.find("state=") + 6;
            return {ok(R"({"code":"the-code","state":")" + request.substr(state, 8) + R"("})")};
        }
        return {ok(R"({"access_token":"new-token","expires_in":"3600","id_token":"i","refresh_token":"new-refresh",)"
                   R"("session_state":"s","token_type":"Bearer"})")};
    }};
    std::shared_ptr<FixedPlatform> phone;
};

TEST_F(WireTest, ASignInIsAnAuthorizeAndATokenRequest) {
    Quorvane::initialize("UVZMT0NM-the-key");
    ASSERT_TRUE(runUntil([] { return Quorvane::isAuthenticated(); }));

    // The challenge is the SHA-256 of the verifier below, worked out by other means.
    EXPECT_THAT(
        identity.requests(),
        ElementsAre(head("GET /authorize?client_id=the-key&code_challenge=OOLKoFiwBuQtilR1VKpqrKRV61qKe7WBZzhhAoa55vE"
                         "&code_challenge_method=S256&redirect_uri=myApp%3A%2F%2Fcallback&response_type=code"
                         "&scope=openid&state=71727374&user_id=0F8FAD5B-D9CB-469F-A165-70867728950E HTTP/1.1",
                         identity4001, plain),
                    head("POST /token HTTP/1.1", identity4001, "Accept-Encoding: identity\r\nContent-Length: 289\r\n") +
                        R"({
  "client_id": "the-key",
  "code": "the-code",
  "code_verifier": "CAkKCwwNDg8QERITFBUWFxgZGhscHR4fICEiIyQlJicoKSorLC0uLzAxMjM0NTY3ODk6Ozw9Pj9AQUJDREVGR0hJSktMTU5PUFFSU1RVVldYWVpbXF1eX2BhYmNkZWZnaGlqa2xtbm9w",
  "grant_type": "authorization_code",
  "redirect_uri": "myApp://callback"
})"));
}

TEST_F(WireTest, SearchesPutTheirParametersIntoTheQuery) {
    initializeSignedIn();
    int answers = 0;
    const auto count = [&](const auto&...) { ++answers; };
    const platform::Location here{{46.0, -14.512345}};

    Quorvane::Search::tasks(here, 1000, 50, count);
    ASSERT_TRUE(runUntil([&] { return answers == 1; }));
    Quorvane::Search::tasks(CampaignId{"a b+c&d%\xC5\xBE"}, count);
    ASSERT_TRUE(runUntil([&] { return answers == 2; }));
    Quorvane::Search::tasks(PlaceId{""}, count);
    ASSERT_TRUE(runUntil([&] { return answers == 3; }));
    Quorvane::Search::places(here, 250, std::vector<std::string>{"chain"}, std::nullopt, std::nullopt, 10, count);
    ASSERT_TRUE(runUntil([&] { return answers == 4; }));

    EXPECT_THAT(
        data.requests(),
        ElementsAre(head("GET /generate/tasks?lat=46.0&lng=-14.512345&min=50&rad=1000 HTTP/1.1", data3000, authorized),
                    head("GET /generate/tasks?cid=a%20b%2Bc%26d%25%C5%BE HTTP/1.1", data3000, authorized),
                    head("GET /generate/tasks?lid= HTTP/1.1", data3000, authorized),
                    head("GET /locations/find?lat=46.0&lng=-14.512345&rad=250 HTTP/1.1", data3000, authorized)));
}

TEST_F(WireTest, ARefreshCarriesTheRefreshTokenInAJSONBody) {
    initializeSignedIn();
    phone->preferences().setInteger("qourvane_access_token_expiry", 1);
    bool answered = false;

    Quorvane::Search::tasks(CampaignId{"c"}, [&](const auto&...) { answered = true; });
    ASSERT_TRUE(runUntil([&] { return answered; }));

    EXPECT_THAT(identity.requests(), ElementsAre(head("POST /token HTTP/1.1", identity4001,
                                                      "Authorization: Bearer stored-token\r\n"
                                                      "Accept-Encoding: identity\r\n"
                                                      "Content-Length: 98\r\n") +
                                                 R"({
  "client_id": "the-key",
  "grant_type": "refresh_token",
  "refresh_token": "stored-refresh"
})"));
    EXPECT_THAT(data.requests(), ElementsAre(head("GET /generate/tasks?cid=c HTTP/1.1", data3000,
                                                  "Authorization: Bearer new-token\r\n"
                                                  "Accept-Encoding: identity\r\n")));
}

TEST_F(WireTest, TheConfigurationIsAskedForWithThreeIdentifiers) {
    initializeSignedIn();

    Quorvane::initialize("UVZMT0NM-the-key");
    ASSERT_TRUE(runUntil([&] { return data.requests().size() == 1; }));

    EXPECT_THAT(data.requests(), ElementsAre(head("GET /config?deviceId=0F8FAD5B-D9CB-469F-A165-70867728950E"
                                                  "&installId=00010203-0405-4607-8809-0A0B0C0D0E0F"
                                                  "&userId=0F8FAD5B-D9CB-469F-A165-70867728950E HTTP/1.1",
                                                  data3000, authorized)));
}

} // namespace
} // namespace quorvane
