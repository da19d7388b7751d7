#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class TrackWithoutQtTest : public ProgramTest {};

TEST_F(TrackWithoutQtTest, ThereIsNoReceiverAndTrackSaysSo) {
    const Ended ended = run({"track"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors, "quorvane: this quorvane was built without Qt and knows no receiver of locations\n");
}

} // namespace
} // namespace quorvane::tool
