#include <algorithm>

#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

constexpr int columns = 10;
constexpr int rows = 10;

/// A hundred codes in as many fields, named by the fields' numbers or all alike.
template <class Text>
QImage sheet(BarcodeType type, QSize field, const Text& text, int module, int height = 30) {
    QImage picture = placed(QImage(), 0, {columns * field.width(), rows * field.height()});
    for (int i = 0; i < columns * rows; ++i) {
        const QImage code = drawnCode(type, text(i), module, height);
        const int left = i % columns * field.width() + (field.width() - code.width()) / 2;
        const int top = i / columns * field.height() + (field.height() - code.height()) / 2;
        for (int y = 0; y < code.height(); ++y) {
            std::copy(code.constScanLine(y), code.constScanLine(y) + code.width(), picture.scanLine(top + y) + left);
        }
    }
    return picture;
}

std::string number(int i) {
    return "code " + std::to_string(i);
}

TEST(ManyCodes, OfAHundredMatrixCodesSomeAreReported) {
    const std::vector<Barcode> found = readTwice(sheet(BarcodeType::qr, {128, 128}, &number, 3));

    ASSERT_GE(found.size(), 1U);
    EXPECT_LE(found.size(), 100U);
    for (const Barcode& barcode : found) {
        EXPECT_EQ(barcode.type, BarcodeType::qr);
        EXPECT_EQ(barcode.text.value_or("").substr(0, 5), "code ");
    }
}

TEST(ManyCodes, TheOneInTheMiddleComesFirst) {
    for (const int middle : {-1, 0, 1}) {
        QImage picture = placed(QImage(), 0, {900, 480});
        for (int place = -1; place <= 1; ++place) {
            const QImage code = drawnCode(BarcodeType::qr, number(place), place == middle ? 4 : 3);
            const int left = 450 + (place - middle) * 210 - code.width() / 2;
            for (int y = 0; y < code.height(); ++y) {
                for (int x = 0; x < code.width(); ++x) {
                    if (left + x >= 0 && left + x < picture.width()) {
                        picture.scanLine(150 + y)[left + x] = code.constScanLine(y)[x];
                    }
                }
            }
        }

        const std::vector<Barcode> found = readTwice(picture);

        ASSERT_GE(found.size(), 2U);
        EXPECT_EQ(found.front().text, number(middle));
    }
}

TEST(ManyCodes, OfAHundredCodesOfBarsOneIsReported) {
    const std::vector<Barcode> found = readTwice(sheet(BarcodeType::code128, {300, 60}, &number, 2));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].type, BarcodeType::code128);
    ASSERT_TRUE(found[0].text.has_value());
    EXPECT_EQ(found[0].text->substr(0, 5), "code ");
}

TEST(ManyCodes, AHundredTimesTheSameCodeIsOneCode) {
    for (const Sample& sample : sampleCodes()) {
        if (sample.type == BarcodeType::pdf417) {
            continue; // Stacked rows that nearly touch are not told apart.
        }
        const QSize field = drawnCode(sample.type, sample.text, 2, 30).size() + QSize(10, 10);
        const auto same = [&](int) { return sample.text; };

        EXPECT_EQ(readWithin(30, sheet(sample.type, field, same, 2)),
                  (std::vector<Barcode>{{sample.type, sample.text}}))
            << sample.text;
    }
}

TEST(ManyCodes, ACodeWithinAnotherComesFirst) {
    QImage picture = placed(drawnCode(BarcodeType::qr, "a code with room for another one in its middle", 12), 0);
    const QImage inner = drawnCode(BarcodeType::qr, "in", 2);
    const int size = 60;
    const int margin = (inner.width() - size) / 2;
    for (int y = 0; y < size; ++y) {
        const uchar* const from = inner.constScanLine(y + margin) + margin;
        std::copy(from, from + size, picture.scanLine(360 - size / 2 + y) + 640 - size / 2);
    }

    const std::vector<Barcode> found = readTwice(picture);

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].text, "in");
}

} // namespace
} // namespace quorvane
