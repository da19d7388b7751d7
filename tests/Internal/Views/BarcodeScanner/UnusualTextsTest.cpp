#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

std::vector<Barcode> readBack(BarcodeType type, const std::string& text, int module = 3) {
    return readTwice(placed(drawnCode(type, text, module), 0));
}

TEST(UnusualTexts, OfFourThousandCharactersAreReadWhole) {
    std::string text;
    while (text.size() < 4000) {
        text += std::to_string(text.size()) + " ";
    }
    text.resize(4000);

    EXPECT_EQ(readBack(BarcodeType::qr, text), (std::vector<Barcode>{{BarcodeType::qr, text}}));
}

TEST(UnusualTexts, KeepTheirControlCharacters) {
    const std::string text =
        "[)>\x1E"
        "06\x1D"
        "P1234\x1DQ5\x1E\x04\r\n\t\x01\x7F";

    for (const BarcodeType type : {BarcodeType::qr, BarcodeType::dataMatrix, BarcodeType::aztec, BarcodeType::pdf417}) {
        EXPECT_EQ(readBack(type, text), (std::vector<Barcode>{{type, text}}));
    }
    EXPECT_EQ(readBack(BarcodeType::code128, "AB\x1D\x02 9"),
              (std::vector<Barcode>{{BarcodeType::code128, "AB\x1D\x02 9"}}));
}

TEST(UnusualTexts, WithZerosInThemAreReadWhole) {
    const std::string text("a\0b\0", 4);

    EXPECT_EQ(readBack(BarcodeType::qr, text), (std::vector<Barcode>{{BarcodeType::qr, text}}));
}

TEST(UnusualTexts, BeyondASCIIAreDeliveredInUTF8) {
    for (const std::string text : {"Größe 38 €", "regał №5", "棚のコード"}) {
        EXPECT_EQ(readBack(BarcodeType::qr, text), (std::vector<Barcode>{{BarcodeType::qr, text}}));
    }
}

TEST(UnusualTexts, CodesThatHoldBytesHaveNone) {
    const QImage bytes = placed(codeOfBytes({0x00, 0xFF, 0x80, 0x9F, 0xFE, 0x81, 0x00, 0x8D, 0xC3, 0x28}), 0);

    EXPECT_EQ(readTwice(bytes), (std::vector<Barcode>{{BarcodeType::qr, std::nullopt}}));
}

TEST(UnusualTexts, CodesOfDifferentBytesAreDifferentCodes) {
    const auto reader = barcodeReader(allBarcodeTypes());
    const auto show = [&](const std::vector<std::uint8_t>& bytes) {
        return reader->read(grayFrame(placed(codeOfBytes(bytes), 0)), std::nullopt).size();
    };

    EXPECT_EQ(show({0x00, 0xFF, 0x80}), 0U);
    EXPECT_EQ(show({0x00, 0xFF, 0x81}), 0U);
    EXPECT_EQ(show({0x00, 0xFF, 0x81}), 1U);
}

TEST(UnusualTexts, ACodeWithATextComesBeforeOneThatHoldsBytes) {
    QImage both = placed(codeOfBytes({0x00, 0xFF, 0x80}), 0, {900, 480});
    const QImage text = placed(drawnCode(BarcodeType::qr, "text"), 0, {900, 480}, {300, 0});
    for (int y = 0; y < both.height(); ++y) {
        std::copy(text.constScanLine(y) + 600, text.constScanLine(y) + 900, both.scanLine(y) + 600);
    }

    const std::vector<Barcode> found = readTwice(both);

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].text, "text");
    EXPECT_EQ(found[1].text, std::nullopt);
}

TEST(UnusualTexts, NoiseAndPatternsHoldNone) {
    const auto reader = barcodeReader(allBarcodeTypes());
    for (unsigned seed = 0; seed < 12; ++seed) {
        const QImage noise = noisy(placed(QImage(), 0, {500, 400}), 5.0 * (seed + 1), seed);
        EXPECT_EQ(reader->read(grayFrame(noise), std::nullopt), std::vector<Barcode>());
        EXPECT_EQ(reader->read(grayFrame(noise), std::nullopt), std::vector<Barcode>());
    }
    QImage bars = placed(QImage(), 0, {500, 400});
    for (int y = 0; y < bars.height(); ++y) {
        for (int x = 0; x < bars.width(); ++x) {
            bars.scanLine(y)[x] = (x * x / 90 + y / 130) % 2 == 0 ? 20 : 230;
        }
    }
    EXPECT_EQ(readWithin(30, bars), std::vector<Barcode>());
}

} // namespace
} // namespace quorvane
