#include <cstdio>
#include <set>

#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"
#include "Internal/Views/BarcodeScanner/Photographs.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

/// How many frames of the same picture a user waits for, at 30 a second: two thirds of a second.
constexpr int patience = 20;

/// Not read; each for a reason that no change of the picture mends, or none found so far.
const std::set<std::string> unread{"aztec-1/az-thin",
                                   "aztec-1/padding_bs",
                                   "aztec-1/rune-64",
                                   "code128-2/n444",
                                   "datamatrix-3/n749",
                                   "datamatrix-3/dm-2x2-n1063",
                                   "datamatrix-3/dm-2x2-n669-2",
                                   "ean13-1/n526",
                                   "ean13-2/01",
                                   "ean13-2/23",
                                   "ean13-2/28",
                                   "qrcode-2/13",
                                   "upca-2/11",
                                   "upca-2/34",
                                   "upce-2/20",
                                   "upce-2/35"};

/// What the outer one holds of two codes in one picture, of which the inner one is asked for. Both end with one line.
std::string textAround(const Photograph& inner) {
    return "[外側QRコード]\r\n \r\n*ﾀﾞﾌﾞﾙQR*" + inner.text.substr(inner.text.rfind("\r\n"));
}

class Photographs : public ::testing::Test {
protected:
    void SetUp() override {
        if (all.empty()) {
            GTEST_SKIP() << "QUORVANE_TEST_DATA names no folder with photographs of barcodes";
        }
    }
    const std::vector<Photograph> all = photographs();
};

TEST_F(Photographs, AreReadButForThoseThatAreKnownNotToBeAndNoneIsMisread) {
    ReadingReport report;
    std::set<std::string> missed;
    for (const Photograph& photograph : all) {
        ASSERT_FALSE(photograph.picture.isNull()) << photograph.name;
        ReadCounts& counts = report[photograph.symbology];
        const std::vector<Barcode> found = readWithin(patience, photograph.picture);
        if (found.empty() || !found.front().text) {
            ++counts.missed;
            missed.insert(photograph.name);
        } else if (photograph.shows(*found.front().text)) {
            ++counts.read;
        } else {
            ++counts.misread;
            ADD_FAILURE() << photograph.name << " was read as " << *found.front().text;
        }
    }

    for (const auto& [symbology, counts] : report) {
        std::printf("%-12s read %2d, misread %d, missed %d\n", symbology.c_str(), counts.read, counts.misread,
                    counts.missed);
    }
    EXPECT_EQ(missed, unread);
}

TEST_F(Photographs, AreNeverMisreadWhenTheyAreTurned) {
    int read = 0;
    for (const Photograph& photograph : all) {
        for (const double degrees : {20.0, 45.0}) {
            const QImage picture = placed(photograph.picture, degrees, {640, 480});
            for (const Barcode& barcode : readWithin(4, picture)) {
                const bool isThere = !barcode.text || photograph.shows(*barcode.text) ||
                                     (photograph.name == "qrcode-2/16" && *barcode.text == textAround(photograph));
                EXPECT_TRUE(isThere) << photograph.name << " was read as " << *barcode.text;
                ++read;
            }
        }
    }
    EXPECT_GE(read, 60);
}

TEST_F(Photographs, AreNotTakenForCodesOfOtherTypes) {
    for (const Photograph& photograph : all) {
        const bool isMatrix = photograph.symbology == "qrcode" || photograph.symbology == "aztec" ||
                              photograph.symbology == "datamatrix" || photograph.symbology == "pdf417";
        using enum BarcodeType;
        const std::vector<BarcodeType> others =
            isMatrix ? std::vector{code128, code39, code93, interleaved2of5, itf14, ean8, ean13, upce}
                     : std::vector{aztec, dataMatrix, qr, pdf417};
        EXPECT_EQ(readWithin(6, photograph.picture, others), std::vector<Barcode>()) << photograph.name;
    }
}

} // namespace
} // namespace quorvane
