#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tools/Failure.h"
#include "tools/demo/Ride.h"

namespace quorvane::tool {
namespace {

class RideTest : public ::testing::Test {
protected:
    /// A ride of these track points.
    Ride rideOf(const std::string& points) {
        std::ofstream(path) << R"(<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1"><trk><trkseg>)" << points
                            << "</trkseg></trk></gpx>";
        Ride ride = Ride::fromFile(path);
        std::filesystem::remove(path);
        return ride;
    }

    static std::string point(double longitude) {
        return "<trkpt lat=\"0\" lon=\"" + std::to_string(longitude) + "\"/>";
    }

    const std::string path =
        ::testing::TempDir() + "ride-" + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".gpx";
};

TEST_F(RideTest, TheInventedRideIsHalfAnHourOnABicycle) {
    const Ride ride = Ride::invented();

    ASSERT_TRUE(ride.duration().has_value());
    EXPECT_GE(*ride.duration(), std::chrono::minutes(25));
    EXPECT_LE(*ride.duration(), std::chrono::minutes(40));
    EXPECT_GE(ride.fixCount(), 150U);
    EXPECT_LE(ride.fixCount(), 300U);
    EXPECT_GT(ride.metres(), 4'000);
    EXPECT_LT(ride.metres(), 14'000);
}

TEST_F(RideTest, NoFixOfTheInventedRideIsTooFarFromTheOneBefore) {
    const std::vector<platform::Coordinate> points = Ride::invented().coordinates();

    for (std::size_t i = 1; i < points.size(); ++i) {
        EXPECT_LT(platform::distance(points[i - 1], points[i]), 80) << "at fix " << i;
    }
}

TEST_F(RideTest, StopsAreSpreadEvenlyOverTheFixes) {
    std::string points;
    for (int i = 0; i < 12; ++i) {
        // Between the sixth fix and the seventh the receiver was off.
        points += point(0.001 * i + (i < 6 ? 0 : 5));
    }

    const std::vector<Ride::Stop> stops = rideOf(points).stops(6);

    ASSERT_EQ(stops.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        const double expected = 0.001 * static_cast<double>(2 * i + 1) + (i < 3 ? 0 : 5);
        EXPECT_NEAR(stops[i].fix.coordinate.longitude, expected, 1e-9) << i;
    }
}

TEST_F(RideTest, AShortTrackHasAStopAtEachFix) {
    EXPECT_EQ(rideOf(point(0)).stops(6).size(), 1U);
    EXPECT_EQ(rideOf(point(0) + point(0.01)).stops(6).size(), 2U);
}

TEST_F(RideTest, AStopKnowsHowFarItIsAlongTheWay) {
    const std::vector<Ride::Stop> stops = rideOf(point(0) + point(0.01) + point(0)).stops(3);

    ASSERT_EQ(stops.size(), 3U);
    EXPECT_EQ(stops[0].metres, 0);
    EXPECT_NEAR(stops[1].metres, 1'112, 1);
    EXPECT_NEAR(stops[2].metres, 2'224, 1);
}

TEST_F(RideTest, ATrackWithoutTimesHasNoDuration) {
    const Ride ride = rideOf(point(0) + point(0.01));

    EXPECT_EQ(ride.duration(), std::nullopt);
    EXPECT_FALSE(ride.isTimed());
}

TEST_F(RideTest, ItsBeginningEndsBeforeTheFirstFixThatIsTooLate) {
    const auto timed = [](const std::string& time) {
        return R"(<trkpt lat="46" lon="14"><time>2024-05-18T)" + time + "Z</time></trkpt>";
    };
    // A clock that was set back does not end it.
    const Ride ride = rideOf(timed("08:00:00") + timed("07:00:00") + timed("09:00:00") + timed("09:00:01"));

    EXPECT_EQ(ride.beginning(std::chrono::hours(1))->fixes.size(), 3U);
    EXPECT_EQ(ride.beginning(std::chrono::hours(2))->fixes.size(), 4U);
    EXPECT_EQ(ride.beginning(std::chrono::seconds(0))->fixes.size(), 2U);
    EXPECT_EQ(ride.fixCount(), 4U);
}

TEST_F(RideTest, ARideOfCenturiesIsCutLikeAnyOther) {
    const Ride ride = rideOf(R"(<trkpt lat="46" lon="14"><time>1680-01-01T00:00:00Z</time></trkpt>)"
                             R"(<trkpt lat="46" lon="14"><time>2260-01-01T00:00:00Z</time></trkpt>)");

    EXPECT_EQ(ride.duration(), std::chrono::days(211'840));
    EXPECT_EQ(ride.beginning(std::chrono::days(31))->fixes.size(), 1U);
    EXPECT_EQ(ride.beginning(std::chrono::days(211'840))->fixes.size(), 2U);
}

TEST_F(RideTest, AFileThatIsNoTrackIsAFailureThatNamesIt) {
    try {
        static_cast<void>(Ride::fromFile(path));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_NE(std::string(failure.what()).find(path), std::string::npos);
        EXPECT_EQ(failure.status, std::nullopt);
    }
}

} // namespace
} // namespace quorvane::tool
