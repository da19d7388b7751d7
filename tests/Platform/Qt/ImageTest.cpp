#include <QImageReader>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Platform/Qt/ImageTesting.h"
#include "Platform/Qt/QtImages.h"
#include "Platform/contract/ImageContract.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform {

namespace contract {
namespace {

std::shared_ptr<Image> pictureOrNone(const QtImages::Result& result) {
    const auto* const picture = std::get_if<std::shared_ptr<Image>>(&result);
    return picture == nullptr ? nullptr : *picture;
}

INSTANTIATE_TEST_SUITE_P(Qt, ImageContract,
                         ::testing::Values(ImageMaker{
                             [](int width, int height, std::string_view pixels) {
                                 return pictureOrNone(QtImages::fromPixels(width, height, pixels));
                             },
                             [](std::string_view file) { return pictureOrNone(QtImages::decode(file)); }}));

} // namespace
} // namespace contract

namespace qt {
namespace {

using ::quorvane::testing::ScratchDirectory;

/// The letters of the colours in the middle of the four quarters.
std::string quartersOf(const Image& image) {
    const QImage& pixels = pixelsOf(image);
    std::string letters;
    for (const int y : {image.height() / 4, image.height() * 3 / 4}) {
        for (const int x : {image.width() / 4, image.width() * 3 / 4}) {
            const QColor color = pixels.pixelColor(x, y);
            const bool isWhite = color.red() > 128 && color.blue() > 128;
            letters += isWhite ? 'W' : color.red() > 128 ? 'R' : color.green() > 128 ? 'G' : 'B';
        }
    }
    return letters;
}

TEST(QtImages, ReadsWhateverKindQtReadsByItsContent) {
    for (const char* const format : {"jpeg", "png", "bmp", "ppm"}) {
        SCOPED_TRACE(format);
        const auto image = pictureIn(QtImages::decode(fileOf(quarters(32, 16), format)));

        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->width(), 32);
        EXPECT_EQ(image->height(), 16);
        EXPECT_EQ(quartersOf(*image), "RGBW");
    }
}

TEST(QtImages, AGreyPictureIsAPictureToo) {
    const auto image =
        pictureIn(QtImages::decode(fileOf(quarters(32, 16).convertToFormat(QImage::Format_Grayscale8), "jpeg")));

    ASSERT_NE(image, nullptr);
    EXPECT_EQ(pixelsOf(*image).format(), QImage::Format_RGB888);
    EXPECT_GT(pixelsOf(*image).pixelColor(24, 12).green(), 250);
}

TEST(QtImages, APictureIsTurnedUprightAsItsCameraNoted) {
    const std::vector<std::string> upright{"RGBW", "GRWB", "WBGR", "BWRG", "RBGW", "BRWG", "WGBR", "GWRB"};
    const std::string file = fileOf(quarters(64, 32), "jpeg");
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const auto image = pictureIn(QtImages::decode(withOrientation(file, orientation)));

        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->width(), orientation < 5 ? 64 : 32);
        EXPECT_EQ(image->height(), orientation < 5 ? 32 : 64);
        EXPECT_EQ(quartersOf(*image), upright[static_cast<std::size_t>(orientation) - 1]);
    }
}

TEST(QtImages, WhatIsTransparentIsWhite) {
    QImage glass(4, 2, QImage::Format_ARGB32);
    glass.fill(QColor(0, 0, 0, 0));
    glass.setPixelColor(0, 0, QColor(10, 20, 30));
    glass.setPixelColor(1, 0, QColor(255, 0, 0, 128));

    const auto image = pictureIn(QtImages::decode(fileOf(glass, "png")));

    ASSERT_NE(image, nullptr);
    EXPECT_EQ(pixelsOf(*image).pixelColor(3, 1), QColor(255, 255, 255));
    EXPECT_EQ(pixelsOf(*image).pixelColor(0, 0), QColor(10, 20, 30));
    EXPECT_NEAR(pixelsOf(*image).pixelColor(1, 0).green(), 127, 2);
}

TEST(QtImages, APNGFileKeepsEveryPixel) {
    const auto image = pictureIn(QtImages::decode(fileOf(quarters(31, 17), "bmp")));

    const auto again = pictureIn(QtImages::decode(image->png().value_or("")));

    ASSERT_NE(again, nullptr);
    EXPECT_EQ(pixelsOf(*again), quarters(31, 17));
}

TEST(QtImages, AHundredMegapixelsAreDecodedWhateverTheLimitOfTheProcess) {
    QImage large(10'000, 10'000, QImage::Format_Grayscale8);
    large.fill(Qt::white);
    const std::string file = fileOf(large, "jpeg");
    large = QImage();
    const int limit = QImageReader::allocationLimit();

    const auto image = pictureIn(QtImages::decode(file));

    ASSERT_NE(image, nullptr);
    EXPECT_EQ(std::int64_t{image->width()} * image->height(), QtImages::mostPixels);
    EXPECT_EQ(image->half()->width(), 5'000);
    EXPECT_EQ(QImageReader::allocationLimit(), limit) << "the limit is the host's";
}

TEST(QtImages, OnePixelMoreThanTheMostIsRefusedBeforeItIsDecoded) {
    std::string file = fileOf(QImage(1, 1, QImage::Format_RGB888), "bmp");
    // 10,000 x 10,001 in the header; there are no such pixels.
    file.replace(18, 8, std::string("\x10\x27\0\0\x11\x27\0\0", 8));

    EXPECT_EQ(sentenceIn(QtImages::decode(file)),
              "the picture has 10000 × 10001 pixels, and at most 100 megapixels are decoded");
}

TEST(QtImages, WhatIsNoPictureIsRefusedInASentence) {
    EXPECT_EQ(sentenceIn(QtImages::decode("")), "the picture is empty");
    for (const std::string& file :
         {std::string("a"), std::string("%PDF-1.7\n"), std::string(10'000, '\0'), std::string("{\"task\":{}}")}) {
        EXPECT_EQ(sentenceIn(QtImages::decode(file)), "this is no picture, or of a kind that is not known here");
    }
    for (const char* const file : {"\xFF\xD8", "\xFF\xD8\xFF\xD9"}) {
        EXPECT_EQ(sentenceIn(QtImages::decode(file)), "the picture is damaged");
    }
}

TEST(QtImages, ADrawingIsRefusedWhereThereAreNoFontsForIt) {
    const ScratchDirectory scratch;
    const std::string drawing =
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20"><text x="1" y="15">text</text></svg>)";
    const std::string sentence = "this is a drawing, and drawings are decoded in GUI applications only";
    EXPECT_EQ(sentenceIn(QtImages::decode(drawing)), sentence);

    for (const char* const name : {"/drawing.svg", "/drawing.png"}) {
        std::ofstream(scratch.path() + name) << drawing;
        EXPECT_EQ(sentenceIn(QtImages::read(scratch.path() + name)), scratch.path() + name + ": " + sentence);
    }
}

TEST(QtImages, APictureThatIsCutOffAnywhereIsRefused) {
    const std::string jpeg = withOrientation(fileOf(quarters(32, 32), "jpeg"), 6);
    const std::string png = fileOf(quarters(32, 32), "png");
    for (std::size_t size = 0; size < jpeg.size(); ++size) {
        EXPECT_NE(sentenceIn(QtImages::decode(jpeg.substr(0, size))), "") << "JPEG, " << size;
    }
    for (std::size_t size = 0; size < png.size(); ++size) {
        EXPECT_NE(sentenceIn(QtImages::decode(png.substr(0, size))), "") << "PNG, " << size;
    }
    EXPECT_EQ(sentenceIn(QtImages::decode(jpeg.substr(0, jpeg.size() - 2))), "the picture is cut off before its end");
    EXPECT_EQ(sentenceIn(QtImages::decode(png.substr(0, png.size() - 1))), "the picture is cut off before its end");
    EXPECT_EQ(sentenceIn(QtImages::decode(jpeg + "what follows the end")), "");
}

TEST(QtImages, DamagedFilesEndInAPictureOrASentence) {
    const std::vector<std::string> files{withOrientation(fileOf(quarters(32, 32), "jpeg"), 6),
                                         fileOf(quarters(32, 32), "png"), fileOf(quarters(8, 8), "bmp")};
    std::size_t refused = 0;
    for (const std::string& file : files) {
        for (std::size_t at = 0; at < file.size(); ++at) {
            std::string damaged = file;
            damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
            const QtImages::Result result = QtImages::decode(damaged);
            const auto* const image = std::get_if<std::shared_ptr<Image>>(&result);
            EXPECT_TRUE(image == nullptr || (*image)->half() != nullptr);
            refused += image == nullptr ? 1 : 0;
        }
    }
    EXPECT_GT(refused, 0U);
}

TEST(QtImages, AFileOnDiskIsReadAndItsPathStandsBeforeWhatIsWrong) {
    const ScratchDirectory scratch;
    const std::string path = scratch.path() + "/photo";
    std::ofstream(path, std::ios::binary) << fileOf(quarters(32, 16), "jpeg");
    EXPECT_EQ(quartersOf(*pictureIn(QtImages::read(path))), "RGBW");

    std::ofstream(path, std::ios::trunc) << "text";
    EXPECT_EQ(sentenceIn(QtImages::read(path)), path + ": this is no picture, or of a kind that is not known here");
    EXPECT_EQ(sentenceIn(QtImages::read(path + "s")), path + "s: No such file or directory");
    EXPECT_EQ(sentenceIn(QtImages::read(scratch.path())), scratch.path() + ": Is a directory");
}

TEST(QtImages, AFileWithoutAnEndIsRefusedByItsSize) {
    EXPECT_EQ(sentenceIn(QtImages::read("/dev/zero")), "/dev/zero: the file is larger than 512 MiB");
}

TEST(QtImages, PixelsMustFillThePicture) {
    EXPECT_EQ(sentenceIn(QtImages::fromPixels(1, 2, "123456")), "");
    for (const auto& [width, height] : {std::pair(1, 1), {2, 2}, {0, 0}, {-1, -2}, {2'000'000'000, 2'000'000'000}}) {
        EXPECT_NE(sentenceIn(QtImages::fromPixels(width, height, "123456")), "") << width << " x " << height;
    }
}

TEST(QtImages, RealPhotographsAreReadHalvedAndEncoded) {
    const char* const data = std::getenv("QUORVANE_TEST_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "QUORVANE_TEST_DATA names no folder with photographs";
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(std::filesystem::path(data) / "barcodes")) {
        if (entry.path().extension() != ".png" && entry.path().extension() != ".jpg") {
            continue;
        }
        SCOPED_TRACE(entry.path().string());
        ++count;
        const auto image = pictureIn(QtImages::read(entry.path().string()));
        ASSERT_NE(image, nullptr);
        const auto again = pictureIn(QtImages::decode(image->half()->jpeg(0.9).value_or("")));
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->width(), std::max(image->width() / 2, 1));
        EXPECT_EQ(again->height(), std::max(image->height() / 2, 1));
    }
    EXPECT_GT(count, 50U);
}

} // namespace
} // namespace qt
} // namespace quorvane::platform
