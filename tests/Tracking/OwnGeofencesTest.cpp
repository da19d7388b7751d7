#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

class OwnGeofencesTest : public TrackingTest {
protected:
    OwnGeofencesTest() {
        options.useMovingGeofence = true;
        options.movingGeofenceRadius = 150;
        track(options);
        hosts = services().make();
    }
    ~OwnGeofencesTest() override { hosts.reset(); }

    void place(const platform::Location& location) {
        manager().updateTracking(location);
        settle();
    }

    QuorvaneTrackingOptions options;
    /// A manager that the host itself made.
    std::unique_ptr<platform::LocationManager> hosts;
};

TEST_F(OwnGeofencesTest, ItsIdentifierIsThePrefixAndARandomUUID) {
    place(fixAt(0));

    EXPECT_THAT(regions(),
                ElementsAre(MatchesRegex("qv-visit-region_[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]"
                                         "{3}-[0-9A-F]{12}")));
}

TEST_F(OwnGeofencesTest, ANewOneTakesThePlaceOfTheOld) {
    place(fixAt(0));
    const auto first = regions();

    place(fixAt(500));

    ASSERT_THAT(regions(), SizeIs(1));
    EXPECT_NE(regions(), first);
    EXPECT_EQ(services().regions()[0].center, fixAt(500).coordinate);
    const auto told = observer.of<observed::Geofence>();
    ASSERT_THAT(told, SizeIs(3));
    EXPECT_TRUE(told[0].isPlaced);
    EXPECT_FALSE(told[1].isPlaced);
    EXPECT_EQ(told[1].region, told[0].region);
    EXPECT_TRUE(told[2].isPlaced);
}

TEST_F(OwnGeofencesTest, AStopWithoutPermissionTakesItAwayToo) {
    hosts->startMonitoring({"host", {46.0, 14.5}, 100});
    place(fixAt(0));
    ASSERT_THAT(regions(), SizeIs(2));
    services().setAuthorization(platform::LocationAuthorization::denied);
    settle();

    manager().stopTracking();
    settle();

    EXPECT_THAT(regions(), ElementsAre("host"));
}

TEST_F(OwnGeofencesTest, EachFixMovesItAndOneThatIsTooInaccurateToo) {
    setSent(1s);
    handle(fixAt(500));
    ASSERT_THAT(regions(), SizeIs(1));
    EXPECT_EQ(services().regions()[0].center, fixAt(500).coordinate);

    options.useStoppedGeofence = true;
    options.stoppedGeofenceRadius = 60;
    QVSettings::setTrackingOptions(options);
    setStopped(true);
    handle(fixAt(900, 1, 1500));

    ASSERT_EQ(fixes().back().outcome, observed::Fix::Outcome::inaccurate);
    ASSERT_THAT(regions(), SizeIs(1));
    EXPECT_EQ(services().regions()[0].center, fixAt(900).coordinate);
    EXPECT_EQ(services().regions()[0].radius, 60.0);
}

TEST_F(OwnGeofencesTest, AManualLocationLeavesItWhereItIs) {
    options.useStoppedGeofence = true;
    options.stoppedGeofenceRadius = 60;
    QVSettings::setTrackingOptions(options);
    setStopped(true);
    setSent(1s);
    place(fixAt(0));
    const auto first = regions();
    ASSERT_THAT(first, SizeIs(1));

    handle(fixAt(500), Source::MANUAL_LOCATION);

    EXPECT_EQ(fixes().back().sync->rule, SyncDecision::Rule::syncMode);
    EXPECT_EQ(regions(), first);
}

TEST_F(OwnGeofencesTest, OneWithoutARadiusIsAskedForAndRefusedByThePlatform) {
    options.movingGeofenceRadius = 0;
    QVSettings::setTrackingOptions(options);
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;

    place(fixAt(0));

    EXPECT_THAT(regions(), SizeIs(0));
    EXPECT_THAT(messages(), ::testing::Contains(::testing::StartsWith("monitoringDidFailFor | region = "
                                                                      "qv-visit-region_")));
}

TEST_F(OwnGeofencesTest, RegionsOfOthersAreLeftAlone) {
    hosts->startMonitoring({"qv-visit", {46, 14}, 50});
    hosts->startMonitoring({"my qv-visit-region_1", {46, 14}, 50});
    place(fixAt(0));
    EXPECT_THAT(regions(), SizeIs(3));

    manager().stopTracking();
    settle();

    EXPECT_THAT(regions(), ElementsAre("qv-visit", "my qv-visit-region_1"));
}

TEST_F(OwnGeofencesTest, EveryRegionWithThePrefixIsTakenForOurs) {
    hosts->startMonitoring({"qv-visit-region", {46, 14}, 50});
    hosts->startMonitoring({"qv-visit-region-of-mine", {46, 14}, 50});

    place(fixAt(0));

    EXPECT_THAT(regions(), SizeIs(1));
}

TEST_F(OwnGeofencesTest, OneOfAnEarlierLaunchIsReplaced) {
    place(fixAt(0));
    const auto first = regions();
    hosts.reset();
    phone.relaunch();
    EXPECT_EQ(regions(), first);

    place(fixAt(0));

    ASSERT_THAT(regions(), SizeIs(1));
    EXPECT_NE(regions(), first);
}

} // namespace
} // namespace quorvane
