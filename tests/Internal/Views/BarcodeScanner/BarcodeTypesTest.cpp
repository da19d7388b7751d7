#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

std::vector<Barcode> readAs(BarcodeType drawn, const std::string& text,
                            const std::vector<BarcodeType>& types = allBarcodeTypes()) {
    return readTwice(placed(drawnCode(drawn, text), 0, {960, 480}), types);
}

std::vector<Barcode> oneCode(BarcodeType type, const std::string& text) {
    return {{type, text}};
}

TEST(BarcodeTypes, ThereIsNoReaderForNoTypes) {
    EXPECT_EQ(barcodeReader({}), nullptr);
}

TEST(BarcodeTypes, ACodeOfUPCAIsDeliveredAsEAN13WithALeadingZero) {
    EXPECT_EQ(readAs(BarcodeType::ean13, "0890444000335"), oneCode(BarcodeType::ean13, "0890444000335"));
}

TEST(BarcodeTypes, UPCEIsDeliveredAsItsEightDigitsAndOnlyWhenAskedFor) {
    EXPECT_EQ(readAs(BarcodeType::upce, "04124498"), oneCode(BarcodeType::upce, "04124498"));
    EXPECT_EQ(readAs(BarcodeType::upce, "04124498", {BarcodeType::ean13, BarcodeType::ean8}), std::vector<Barcode>());
}

TEST(BarcodeTypes, ACode39WhoseLastCharacterIsItsCheckIsToldFromAPlainOne) {
    EXPECT_EQ(readAs(BarcodeType::code39, "CODE 39"), oneCode(BarcodeType::code39, "CODE 39"));
    EXPECT_EQ(readAs(BarcodeType::code39, "MOD 43I"), oneCode(BarcodeType::code39Mod43, "MOD 43I"));
}

TEST(BarcodeTypes, ACode39WithACheckIsAPlainOneWhereOnlyThatIsAskedFor) {
    EXPECT_EQ(readAs(BarcodeType::code39, "MOD 43I", {BarcodeType::code39}), oneCode(BarcodeType::code39, "MOD 43I"));
}

TEST(BarcodeTypes, ACode39WithoutACheckIsNothingWhereOnlyCheckedOnesAreAskedFor) {
    EXPECT_EQ(readAs(BarcodeType::code39, "CODE 39", {BarcodeType::code39Mod43}), std::vector<Barcode>());
}

TEST(BarcodeTypes, ITF14IsFourteenDigitsWithTheirCheck) {
    EXPECT_EQ(readAs(BarcodeType::itf14, "30712345000010"), oneCode(BarcodeType::itf14, "30712345000010"));
    EXPECT_EQ(readAs(BarcodeType::itf14, "30712345000011"), oneCode(BarcodeType::interleaved2of5, "30712345000011"));
    EXPECT_EQ(readAs(BarcodeType::interleaved2of5, "307123450000"),
              oneCode(BarcodeType::interleaved2of5, "307123450000"));
}

TEST(BarcodeTypes, ITF14IsPlainWhereOnlyThatIsAskedForAndAPlainOneNothingWhereOnlyITF14Is) {
    EXPECT_EQ(readAs(BarcodeType::itf14, "30712345000010", {BarcodeType::interleaved2of5}),
              oneCode(BarcodeType::interleaved2of5, "30712345000010"));
    EXPECT_EQ(readAs(BarcodeType::itf14, "30712345000011", {BarcodeType::itf14}), std::vector<Barcode>());
}

TEST(BarcodeTypes, AViewsFiveAreReadAndNoOthers) {
    using enum BarcodeType;
    const std::vector<BarcodeType> five{qr, ean8, ean13, pdf417, upce};

    for (const Sample& sample : sampleCodes()) {
        const bool isAmongThem = std::find(five.begin(), five.end(), sample.type) != five.end();
        EXPECT_EQ(readAs(sample.type, sample.text, five),
                  isAmongThem ? oneCode(sample.type, sample.text) : std::vector<Barcode>())
            << sample.text;
    }
}

} // namespace
} // namespace quorvane
