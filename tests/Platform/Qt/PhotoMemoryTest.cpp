#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "Platform/Qt/ImageTesting.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform::qt {
namespace {

class PhotoMemoryTest : public ::testing::Test {
protected:
    struct Cost {
        std::int64_t peak = 0;
        int width = 0;
        int height = 0;

        [[nodiscard]] std::int64_t decoded() const { return std::int64_t{3} * width * height; }
    };

    /// What the way of @p file from a file to a text costs in a process of its own.
    [[nodiscard]] Cost costOf(const std::string& file) const {
        const std::string path = scratch.path() + "/photo.jpg";
        const std::string output = scratch.path() + "/output";
        std::ofstream(path, std::ios::binary) << file;
        // A sanitizer keeps what was freed unless it is told not to.
        const std::string command = "ASAN_OPTIONS=\"$ASAN_OPTIONS:quarantine_size_mb=0\" '" QUORVANE_PHOTO_PATH "' '" +
                                    path + "' > '" + output + "'";
        EXPECT_EQ(std::system(command.c_str()), 0); // NOLINT(cert-env33-c): a fixed command
        Cost cost;
        std::ifstream(output) >> cost.peak >> cost.width >> cost.height;
        return cost;
    }

    /// Twelve megapixels with something to see on every one of them.
    [[nodiscard]] static QImage photo() {
        QImage image(4000, 3000, QImage::Format_RGB888);
        unsigned number = 1;
        for (int y = 0; y < image.height(); ++y) {
            std::uint8_t* const row = image.scanLine(y);
            for (int x = 0; x < image.width() * 3; ++x) {
                number = number * 1103515245U + 12345U;
                row[x] = static_cast<std::uint8_t>((x + y) / 28 + (number >> 28U));
            }
        }
        return image;
    }

    const testing::ScratchDirectory scratch;
};

TEST_F(PhotoMemoryTest, TheWayOfAPhotoTakesAtMostThreeTimesTheDecodedPicture) {
    const std::string file = fileOf(photo(), "jpeg");

    for (const int orientation : {1, 6}) {
        SCOPED_TRACE(orientation);
        const Cost cost = costOf(withOrientation(file, orientation));

        EXPECT_EQ(cost.decoded(), 36'000'000);
        EXPECT_LE(cost.peak, 3 * cost.decoded());
        EXPECT_GT(cost.peak, cost.decoded()) << "the picture itself is among it";
        RecordProperty("peak in percent of the picture, orientation " + std::to_string(orientation),
                       static_cast<int>(cost.peak * 100 / cost.decoded()));
    }
}

} // namespace
} // namespace quorvane::platform::qt
