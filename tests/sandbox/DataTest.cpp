#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

class DataTest : public SandboxTest {
protected:
    void SetUp() override {
        SandboxTest::SetUp();
        access = signIn().access;
    }

    [[nodiscard]] RawReply find(const std::string& target) const { return get(target, access); }

    /// The objects of a list answer, whose "count" must be their number.
    [[nodiscard]] std::vector<AnyCodable::Dictionary> list(const std::string& target) const {
        const RawReply reply = find(target);
        EXPECT_EQ(reply.status(), 200) << reply.bytes;
        const auto envelope = json::Document::parse(reply.body()).dictionary()->copy();
        EXPECT_THAT(envelope, ::testing::SizeIs(2));
        std::vector<AnyCodable::Dictionary> objects;
        for (const AnyCodable& object : std::get<AnyCodable::List>(envelope.at("data").value)) {
            objects.push_back(std::get<AnyCodable::Dictionary>(object.value));
        }
        EXPECT_EQ(envelope.at("count"), AnyCodable(objects.size()));
        return objects;
    }

    static std::string text(const AnyCodable::Dictionary& object, const std::string& key) {
        return std::get<std::string>(object.at(key).value);
    }

    static double number(const AnyCodable::Dictionary& object, const std::string& key) {
        const auto& value = object.at(key).value;
        const auto* whole = std::get_if<std::int64_t>(&value);
        return whole != nullptr ? static_cast<double>(*whole) : std::get<double>(value);
    }

    static double metresFromCenter(const AnyCodable::Dictionary& object) {
        return platform::distance(SandboxOptions::defaultCenter,
                                  {number(object, "latitude"), number(object, "longitude")});
    }

    static std::vector<std::string> texts(const std::vector<AnyCodable::Dictionary>& objects, const std::string& key) {
        std::vector<std::string> all;
        for (const auto& object : objects) {
            all.push_back(text(object, key));
        }
        return all;
    }

    std::string access;
};

TEST_F(DataTest, TheConfigurationIsTheAPIVersion) {
    const RawReply reply = ask(sandbox->dataPort(),
                               "GET /config?deviceId=D%2F1&installId=I&userId=U HTTP/1.1\r\n"
                               "Host: localhost:3000\r\nAccept: application/json\r\nContent-Type: application/json\r\n"
                               "Authorization: Bearer " +
                                   access + "\r\n\r\n");

    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.header("Content-Type"), "application/json");
    EXPECT_EQ(reply.body(), R"({"apiVersion":"2.0.0"})");
}

TEST_F(DataTest, TheConfigurationNeedsAllItsParameters) {
    expectError(find("/config?installId=i&userId=u"), 400, "invalid_request");
    expectError(find("/config?deviceId=d&userId=u"), 400, "invalid_request");
    expectError(find("/config?deviceId=d&installId=i"), 400, "invalid_request");
    expectError(find("/config?deviceId=d&installId=&userId=u"), 400, "invalid_request");
}

TEST_F(DataTest, PlacesAreThoseWithinTheRadiusInTheOrderOfTheirIdentifiers) {
    const auto all = list("/locations/find?lat=46.05&lng=14.5&rad=4000");
    const auto near = list("/locations/find?lat=46.05&lng=14.5&rad=1500");

    ASSERT_EQ(all.size(), 60U);
    ASSERT_FALSE(near.empty());
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end(),
                               [](const auto& a, const auto& b) { return text(a, "id") < text(b, "id"); }));
    EXPECT_FALSE(std::is_sorted(all.begin(), all.end(), [](const auto& a, const auto& b) {
        return metresFromCenter(a) < metresFromCenter(b);
    }));
    std::vector<std::string> expected;
    for (const auto& place : all) {
        if (metresFromCenter(place) <= 1500) {
            expected.push_back(text(place, "id"));
        }
    }
    EXPECT_EQ(texts(near, "id"), expected);
}

TEST_F(DataTest, AMinimumLeavesOutWhatIsNotFarther) {
    const auto all = list("/locations/find?lat=46.05&lng=14.5&rad=4000");
    std::vector<std::string> expected;
    for (const auto& place : all) {
        if (metresFromCenter(place) > 1500) {
            expected.push_back(text(place, "id"));
        }
    }

    EXPECT_EQ(texts(list("/locations/find?lat=46.05&lng=14.5&rad=4000&min=1500"), "id"), expected);
    EXPECT_EQ(find("/locations/find?lat=46.05&lng=14.5&rad=10&min=10").body(), R"({"count":0,"data":[]})");
}

TEST_F(DataTest, APlaceCarriesItsAddressFlatBesideItsOwnKeys) {
    const auto places = list("/locations/find?lat=46.05&lng=14.5&rad=4000");
    for (const auto& place : places) {
        for (const char* key : {"id", "active", "categories", "name", "group", "key", "owners", "dragonId", "clientKey",
                                "address1", "city", "country", "state", "zipCode", "latitude", "longitude"}) {
            EXPECT_TRUE(place.contains(key)) << key;
        }
        EXPECT_FALSE(place.contains("location"));
    }
    const auto some = [&](const char* key) {
        return std::any_of(places.begin(), places.end(), [&](const auto& place) { return place.contains(key); });
    };
    for (const char* key : {"chain", "metadata", "emails", "clientReference", "address2", "phoneNumber"}) {
        EXPECT_TRUE(some(key)) << key;
    }
}

TEST_F(DataTest, TasksNearAPointTellTheirDistanceInMiles) {
    const auto tasks = list("/generate/tasks?lat=46.05&lng=14.5&rad=1500&min=100");

    ASSERT_FALSE(tasks.empty());
    for (const auto& task : tasks) {
        const auto& location = std::get<AnyCodable::Dictionary>(task.at("location").value);
        const double metres = metresFromCenter(location);
        EXPECT_LE(metres, 1500);
        EXPECT_GT(metres, 100);
        EXPECT_DOUBLE_EQ(number(task, "distance"), metres * 0.6213712 / 1000);
        EXPECT_EQ(text(task, "state"), "generated");
    }
}

TEST_F(DataTest, TasksAreFoundByCampaignAndByPlace) {
    const auto all = list("/generate/tasks?lat=46.05&lng=14.5&rad=4000");
    const auto& owners = std::get<AnyCodable::Dictionary>(all.front().at("owners").value);
    const std::string campaign = text(owners, "campaign");
    const std::string place = text(all.front(), "locationKey");
    std::vector<std::string> ofCampaign;
    std::vector<std::string> ofPlace;
    for (const auto& task : all) {
        if (text(std::get<AnyCodable::Dictionary>(task.at("owners").value), "campaign") == campaign) {
            ofCampaign.push_back(text(task, "key"));
        }
        if (text(task, "locationKey") == place) {
            ofPlace.push_back(text(task, "key"));
        }
    }

    EXPECT_EQ(texts(list("/generate/tasks?cid=" + campaign), "key"), ofCampaign);
    EXPECT_EQ(texts(list("/generate/tasks?lid=" + place), "key"), ofPlace);
    EXPECT_EQ(texts(list("/generate/tasks?lid=place-" + place.substr(3) + "&min=50"), "key"), ofPlace);
    EXPECT_EQ(number(list("/generate/tasks?cid=" + campaign).front(), "distance"), 0);
    EXPECT_EQ(find("/generate/tasks?cid=none").body(), R"({"count":0,"data":[]})");
    EXPECT_EQ(find("/generate/tasks?lid=none").body(), R"({"count":0,"data":[]})");
}

TEST_F(DataTest, TasksAreFoundInOneWayAtATime) {
    expectError(find("/generate/tasks"), 400, "invalid_request");
    expectError(find("/generate/tasks?cid=a&lid=b"), 400, "invalid_request");
    expectError(find("/generate/tasks?lat=46&lng=14&rad=10&cid=a"), 400, "invalid_request");
    expectError(find("/generate/tasks?cid="), 400, "invalid_request");
    expectError(find("/generate/tasks?lid=a&min=near"), 400, "invalid_request");
}

TEST_F(DataTest, ASearchNeedsAPointAndARadius) {
    for (const std::string path : {"/locations/find", "/generate/tasks"}) {
        expectError(find(path + "?lng=14.5&rad=10"), 400, "invalid_request");
        expectError(find(path + "?lat=46.05&rad=10"), 400, "invalid_request");
        expectError(find(path + "?lat=46.05&lng=14.5"), 400, "invalid_request");
    }
}

TEST_F(DataTest, ANumberMustBeOneWithinItsBounds) {
    const auto with = [&](const std::string& lat, const std::string& lng, const std::string& rad) {
        return find("/locations/find?lat=" + lat + "&lng=" + lng + "&rad=" + rad);
    };
    for (const char* text : {"", "x", "1x", "0x1", "nan", "inf", "1e999", "--1", "%201", "1,5"}) {
        expectError(with(text, "14", "10"), 400, "invalid_request");
        expectError(with("46", text, "10"), 400, "invalid_request");
        expectError(with("46", "14", text), 400, "invalid_request");
    }
    expectError(with("90.1", "14", "10"), 400, "invalid_request");
    expectError(with("46", "-180.1", "10"), 400, "invalid_request");
    expectError(with("46", "14", "-1"), 400, "invalid_request");
    expectError(with("46", "14", "30000000"), 400, "invalid_request");
    EXPECT_EQ(with("90", "-180.0", "20015115").status(), 200);
    EXPECT_EQ(with("-9e1", "1.8e2", "0").status(), 200);
}

TEST_F(DataTest, AQueryMustBeReadable) {
    expectError(find("/locations/find?lat=46&lat=46&lng=14&rad=10"), 400, "invalid_request");
    expectError(find("/locations/find?lat=%4&lng=14&rad=10"), 400, "invalid_request");
    expectError(find("/locations/find?lat=%zz&lng=14&rad=10"), 400, "invalid_request");
    expectError(find("/config?deviceId=%ff&installId=i&userId=u"), 400, "invalid_request");
    EXPECT_EQ(find("/locations/find?lat=%346&lng=14&rad=10&&other=1&flag").status(), 200);
}

TEST_F(DataTest, AnUnknownPathIsNotFound) {
    expectError(find("/nowhere"), 404, "not_found");
    expectError(find("/config/"), 404, "not_found");
    expectError(find("/authorize?client_id=key"), 404, "not_found");
    expectError(ask(sandbox->identityPort(), "GET /config HTTP/1.1\r\n\r\n"), 404, "not_found");
}

TEST_F(DataTest, AnotherMethodIsNotAllowed) {
    for (const char* method : {"POST", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE"}) {
        expectError(ask(sandbox->dataPort(), method + std::string(" /config HTTP/1.1\r\nContent-Length: 0\r\n\r\n")),
                    405, "method_not_allowed");
    }
    expectError(ask(sandbox->identityPort(), "GET /token HTTP/1.1\r\n\r\n"), 405, "method_not_allowed");
    expectError(ask(sandbox->identityPort(), "POST /authorize HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}"), 405,
                "method_not_allowed");
}

} // namespace
} // namespace quorvane::sandbox::test
