#include <gtest/gtest.h>

#include "Search/SearchEndpoints.h"

namespace quorvane {
namespace {

using Parameters = std::map<std::string, std::string>;

const platform::Location here{{46.0, -14.5}};
constexpr std::nullopt_t none = std::nullopt;

Parameters textsOf(const EndpointFields& endpoint) {
    Parameters texts;
    for (const auto& [name, value] : endpoint.parameters) {
        texts[name] = textOf(value);
    }
    return texts;
}

Parameters tasks(const std::optional<platform::Location>& location, std::optional<int> radius,
                 std::optional<int> radiusToExclude, const std::optional<std::string>& campaign,
                 const std::optional<std::string>& place) {
    return textsOf(SearchTasksEndpoint(location, radius, radiusToExclude, campaign, place));
}

Parameters places(const std::optional<platform::Location>& location, std::optional<int> radius,
                  std::optional<int> radiusToExclude) {
    return textsOf(SearchPlacesEndpoint(location, radius, radiusToExclude, none, none, none, 10));
}

TEST(SearchTasksEndpoint, IsAGetWithoutABodyThatAnswersJSON) {
    const SearchTasksEndpoint endpoint(here, 1, none, none, none);

    EXPECT_EQ(endpoint.method, RequestMethod::GET);
    EXPECT_EQ(endpoint.path, "/generate/tasks");
    EXPECT_EQ(endpoint.body, "");
    EXPECT_EQ(endpoint.format, ResponseFormat::JSON);
}

TEST(SearchTasksEndpoint, ALocationIsSentWithItsRadius) {
    EXPECT_EQ(tasks(here, 1000, none, none, none), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}, {"rad", "1000"}}));
    EXPECT_EQ(tasks(here, none, none, none, none), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}}));
    EXPECT_EQ(tasks(none, 1000, none, none, none), Parameters());
}

TEST(SearchTasksEndpoint, ALocationWinsOverBothIdentifiers) {
    EXPECT_EQ(tasks(here, 1000, none, "c", "p"), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}, {"rad", "1000"}}));
}

TEST(SearchTasksEndpoint, IdentifiersAreSentWithoutALocation) {
    EXPECT_EQ(tasks(none, none, none, "c", none), (Parameters{{"cid", "c"}}));
    EXPECT_EQ(tasks(none, none, none, none, "p"), (Parameters{{"lid", "p"}}));
    EXPECT_EQ(tasks(none, none, none, "c", "p"), (Parameters{{"cid", "c"}, {"lid", "p"}}));
    EXPECT_EQ(tasks(none, none, none, "", none), (Parameters{{"cid", ""}}));
}

TEST(SearchTasksEndpoint, TheRadiusToExcludeNeedsALocationWithARadius) {
    EXPECT_EQ(tasks(here, 1000, 50, none, none),
              (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}, {"min", "50"}, {"rad", "1000"}}));
    EXPECT_EQ(tasks(here, none, 50, none, none), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}}));
    EXPECT_EQ(tasks(here, none, 50, none, "p"), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}}));
}

TEST(SearchTasksEndpoint, TheRadiusToExcludeGoesWithAPlaceAndNotWithACampaign) {
    EXPECT_EQ(tasks(none, none, 50, none, "p"), (Parameters{{"lid", "p"}, {"min", "50"}}));
    EXPECT_EQ(tasks(none, none, 50, "c", none), (Parameters{{"cid", "c"}}));
    EXPECT_EQ(tasks(none, none, 50, none, none), Parameters());
}

TEST(SearchPlacesEndpoint, IsAGetWithoutABodyThatAnswersJSON) {
    const SearchPlacesEndpoint endpoint(here, 1, none, none, none, none, 10);

    EXPECT_EQ(endpoint.method, RequestMethod::GET);
    EXPECT_EQ(endpoint.path, "/locations/find");
    EXPECT_EQ(endpoint.body, "");
    EXPECT_EQ(endpoint.format, ResponseFormat::JSON);
}

TEST(SearchPlacesEndpoint, ALocationIsSentWithItsRadius) {
    EXPECT_EQ(places(here, 1000, none), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}, {"rad", "1000"}}));
    EXPECT_EQ(places(here, none, none), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}}));
    EXPECT_EQ(places(none, 1000, none), Parameters());
}

TEST(SearchPlacesEndpoint, TheRadiusToExcludeIsSentWheneverItIsGiven) {
    EXPECT_EQ(places(here, none, 50), (Parameters{{"lat", "46.0"}, {"lng", "-14.5"}, {"min", "50"}}));
    EXPECT_EQ(places(none, none, 50), (Parameters{{"min", "50"}}));
}

TEST(SearchPlacesEndpoint, ChainsCategoriesGroupsAndLimitAreNotSent) {
    const StringList some{"a"};
    const SearchPlacesEndpoint plain(here, 1000, none, none, none, none, 10);
    const SearchPlacesEndpoint filtered(here, 1000, none, some, some, some, 99);

    EXPECT_EQ(plain.parameters, filtered.parameters);
    EXPECT_EQ(plain.body, filtered.body);
    EXPECT_EQ(plain.path, filtered.path);
}

} // namespace
} // namespace quorvane
