#include <string>

#include <gtest/gtest.h>

#include "Platform/Qt/PictureEnd.h"

namespace quorvane::platform::qt {
namespace {

const std::string start("\xFF\xD8");
/// A segment of eight bytes with an end marker inside.
const std::string segment(
    "\xFF\xE1\0\x06\xFF\xD9"
    "ab",
    8);
const std::string scan("\xFF\xDA\0\x02", 4);
const std::string end("\xFF\xD9");

const std::string signature("\x89PNG\r\n\x1A\n");

/// A piece of a PNG file, with a checksum that nobody looks at.
std::string chunk(const std::string& type, const std::string& data) {
    return std::string(3, '\0') + static_cast<char>(data.size()) + type + data + "CRC!";
}

TEST(PictureEnd, AJPEGFileThatGoesOnToItsEndIsWhole) {
    EXPECT_FALSE(isCutOff(start + segment + scan + "data" + end));
    EXPECT_FALSE(isCutOff(start + segment + scan + "data" + end + "trailer"));
}

TEST(PictureEnd, AnEndInsideASegmentIsThatOfAPreview) {
    EXPECT_TRUE(isCutOff(start + segment));
    EXPECT_TRUE(isCutOff(start + segment + scan + "data"));
    EXPECT_TRUE(isCutOff(start + segment.substr(0, 6)));
}

TEST(PictureEnd, StuffedBytesRestartsAndFillBytesBelongToTheData) {
    const std::string data(
        "a\xFF\0b\xFF\xD0"
        "c\xFF\xD7"
        "d\xFF\xFF",
        12);
    EXPECT_FALSE(isCutOff(start + scan + data + end));
    EXPECT_TRUE(isCutOff(start + scan + data));
}

TEST(PictureEnd, ALengthThatIsTooShortForItselfLeadsNowhereElse) {
    EXPECT_TRUE(isCutOff(start + std::string("\xFF\xE1\0\0", 4)));
    EXPECT_FALSE(isCutOff(start + std::string("\xFF\xE1\0\0", 4) + end));
}

TEST(PictureEnd, APNGFileThatGoesOnToItsEndIsWhole) {
    EXPECT_FALSE(isCutOff(signature + chunk("IHDR", "size") + chunk("IDAT", "pixels") + chunk("IEND", "")));
    EXPECT_FALSE(isCutOff(signature + chunk("IDAT", "pixels") + chunk("IEND", "") + "trailer"));
}

TEST(PictureEnd, AnEndInsideAChunkDoesNotCount) {
    EXPECT_TRUE(isCutOff(signature + chunk("tEXt", chunk("IEND", ""))));
    EXPECT_TRUE(isCutOff(signature + std::string("\xFF\xFF\xFF\xFFIDAT", 8) + chunk("IEND", "")));
}

TEST(PictureEnd, EveryBeginningOfAFileIsCutOff) {
    const std::string jpeg = start + segment + scan + "da\xFF" + std::string(1, '\0') + segment + scan + "ta" + end;
    for (std::size_t size = 3; size < jpeg.size(); ++size) {
        EXPECT_TRUE(isCutOff(jpeg.substr(0, size))) << size;
    }
    EXPECT_FALSE(isCutOff(jpeg));

    const std::string png = signature + chunk("IHDR", "size") + chunk("IDAT", "pixels") + chunk("IEND", "");
    for (std::size_t size = signature.size(); size < png.size(); ++size) {
        EXPECT_TRUE(isCutOff(png.substr(0, size))) << size;
    }
    EXPECT_FALSE(isCutOff(png));
}

TEST(PictureEnd, OtherFilesAreNeverCutOff) {
    for (const std::string& file : {std::string(), std::string("\xFF\xD8"), std::string("\x89PNG"), std::string("BM"),
                                    std::string("GIF89a"), " " + start + segment}) {
        EXPECT_FALSE(isCutOff(file)) << file;
    }
}

} // namespace
} // namespace quorvane::platform::qt
