#include <sys/stat.h>

#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class PlacesTest : public ProgramTest {
protected:
    PlacesTest() { serve(); }

    Ended add(const std::string& file, Arguments more = {}) {
        Arguments arguments{"places", "add", file, "--near", "46.05,14.5"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    [[nodiscard]] std::string own() const {
        return makeFile("own.json", R"([
            {"id": "own-1", "name": "Our shed", "address1": "Dike 1", "latitude": 46.0501, "longitude": 14.5},
            {"id": "own-2", "name": "Far away", "latitude": 47, "longitude": 14.5}])");
    }
};

TEST_F(PlacesTest, OnesOwnPlacesAreFoundAmongThoseOfTheService) {
    const Ended ended = add(own(), {"--radius", "600"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_GT(lines.size(), 4U) << ended.output;
    EXPECT_EQ(lines[0], "added 2 places");
    EXPECT_TRUE(lines[1].ends_with(" places within 600 m of 46.05000, 14.50000")) << lines[1];
    std::size_t marked = 0;
    for (std::size_t i = 3; i < lines.size(); ++i) {
        const bool isOwn = lines[i].find("Our shed") != std::string::npos;
        EXPECT_EQ(lines[i].ends_with("  yes"), isOwn) << lines[i];
        marked += isOwn ? 1 : 0;
    }
    EXPECT_EQ(marked, 1U) << ended.output;
    EXPECT_EQ(ended.output.find("Far away"), std::string::npos) << "it is outside the radius";
}

TEST_F(PlacesTest, TheJSONDocumentHasWhatWasAddedAndWhatWasFound) {
    const AnyCodable::Dictionary document = add(own(), {"--json"}).document();

    EXPECT_EQ(listIn(document, "added").size(), 2U);
    const AnyCodable::List places = listIn(document, "places");
    EXPECT_TRUE(std::any_of(places.begin(), places.end(), [](const AnyCodable& entry) {
        return textIn(objectIn(objectIn(entry), "place"), "id") == "own-1";
    }));
}

TEST_F(PlacesTest, WhatASearchPrintedCanBeAdded) {
    const Ended search = run({"search", "places", "--near", "46.05,14.5", "--radius", "600", "--json"});
    const std::size_t count = listIn(search.document(), "places").size();

    const AnyCodable::Dictionary document =
        add(makeFile("found.json", search.output), {"--radius", "600", "--json"}).document();

    EXPECT_EQ(listIn(document, "added").size(), count);
    EXPECT_EQ(listIn(document, "places").size(), 2 * count) << "each once from the service and once from the device";
}

TEST_F(PlacesTest, TheFileMayComeOnStandardInput) {
    const std::string one = makeFile("one.json", R"({"id":"own","name":"Shed","latitude":46.05,"longitude":14.5})");
    const Ended ended =
        finish(start({"places", "add", "-", "--near", "46.05,14.5", "--home", home.string(), "--data-port",
                      std::to_string(service->dataPort()), "--identity-port", std::to_string(service->identityPort())},
                     {.output = {}, .errors = {}, .input = one}));

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(ended.output.starts_with("added 1 place\n")) << ended.output;
}

TEST_F(PlacesTest, AFileThatHoldsNoPlaceIsOneSentenceAndNoRequest) {
    const std::string nameless = makeFile("nameless.json", R"({"name":"Shed"})");
    const std::string empty = makeFile("empty.json", R"([{"id":""}])");
    const std::string number = makeFile("number.json", R"([{"id":7}])");
    const std::string absent = (scratch / "absent.json").string();
    for (const auto& [file, sentence] : {std::pair(nameless, nameless + " holds what is no place"),
                                         {empty, empty + " holds a place whose id is no text, or an empty one"},
                                         {number, number + " holds a place whose id is no text, or an empty one"},
                                         {absent, absent + ": No such file or directory"}}) {
        const Ended ended = add(file);

        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
    }
    EXPECT_EQ(service->requests().size(), 0U);
}

TEST_F(PlacesTest, AHundredPlacesAreStoredAndOneMoreIsRefusedBeforeAnythingIs) {
    const auto places = [](int count) {
        std::string list;
        for (int i = 1; i <= count; ++i) {
            list += (list.empty() ? "" : ",") + std::string(R"({"latitude":46.05,"longitude":14.5,"id":"own-)") +
                    std::to_string(i) + "\"}";
        }
        return "[" + list + R"(,{"latitude":46.05,"longitude":14.5,"id":"own-1"}])";
    };
    const std::string tooMany = makeFile("101.json", places(101));

    const Ended refused = add(tooMany);

    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "quorvane: " + tooMany +
                                  " holds 101 places with ids of their own; at most 100 can be stored and found in one "
                                  "run\n");
    EXPECT_EQ(service->requests().size(), 0U);
    EXPECT_FALSE(std::filesystem::exists(home)) << "nothing was stored";
    const Ended taken = add(makeFile("100.json", places(100)), {"--radius", "0"});
    EXPECT_EQ(taken.exitStatus, 0) << taken.errors;
    EXPECT_TRUE(linesOf(taken.output).at(1).starts_with("100 places within 0 m")) << taken.output;
}

TEST_F(PlacesTest, AFolderInWhichNothingCanBeStoredIsOneSentence) {
    const std::string file = own();
    EXPECT_EQ(add(file).exitStatus, 0);
    // Whoever runs this may be allowed to write anywhere, but a file is no folder.
    std::filesystem::path cache;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home)) {
        cache = entry.path().filename() == "qvplaces.cache" ? entry.path() : cache;
    }
    std::filesystem::remove_all(cache);
    std::filesystem::copy_file(file, cache);

    const Ended ended = add(file);

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(linesOf(ended.errors).size(), 1U) << ended.errors;
    EXPECT_TRUE(ended.errors.starts_with("quorvane: the store for places of your own, " + cache.string() +
                                         ", cannot be made: "))
        << ended.errors;
}

TEST_F(PlacesTest, RewardsAreNotProvidedAndSaySoWithoutARequest) {
    const Ended ended = run({"rewards"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors,
              "quorvane: ERROR_UNIMPLEMENTED: this version of the library does not provide that; search "
              "tasks shows the rewards of tasks\n");
    EXPECT_EQ(textIn(run({"rewards", "--json"}).document(), "status"), "ERROR_UNIMPLEMENTED");
    EXPECT_EQ(service->requests().size(), 0U);
}

} // namespace
} // namespace quorvane::tool
