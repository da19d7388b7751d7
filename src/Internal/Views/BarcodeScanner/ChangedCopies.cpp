#include <algorithm>

#include "Internal/Views/BarcodeScanner/Bullseye.h"
#include "Internal/Views/BarcodeScanner/CodeSearch.h"
#include "Internal/Views/BarcodeScanner/PictureCopies.h"

// What a search does with pictures that show nothing as they are.

namespace quorvane::capture {
namespace {

/// What is not in the picture as the camera took it is believed more slowly.
constexpr CodeFinder::Lines changedLines{3, 8};
constexpr CodeFinder::Lines sureLines{3, 0};

} // namespace

const std::vector<CodeSearch::Attempt>& CodeSearch::attempts() {
    static const std::vector<Attempt> all{
        {0.2, true, &CodeSearch::readBullseyes},        {0.8, false, &CodeSearch::readInverted},
        {0.25, true, &CodeSearch::readInvertedBars},    {0.15, true, &CodeSearch::readBarsBetween<15>},
        {2.25, false, &CodeSearch::readScaled<150>},    {0.15, true, &CodeSearch::readBarsBetween<45>},
        {0.2, true, &CodeSearch::readWindows<1>},       {0.15, true, &CodeSearch::readBarsBetween<75>},
        {0.5, false, &CodeSearch::readScaled<67>},      {1, false, &CodeSearch::readSharp<100>},
        {0.5, false, &CodeSearch::readSmoothed},        {0.8, false, &CodeSearch::readRowsTurned<15>},
        {0.8, false, &CodeSearch::readBarsStretched},   {0.8, false, &CodeSearch::readRowsTurned<75>},
        {1.2, false, &CodeSearch::readBordered},        {0.2, true, &CodeSearch::readWindows<0>},
        {0.8, false, &CodeSearch::readRowsTurned<45>},  {4, false, &CodeSearch::readSharp<200>},
        {0.8, false, &CodeSearch::readRowsTurned<30>},  {0.2, true, &CodeSearch::readWindows<2>},
        {0.8, false, &CodeSearch::readInvertedSlanted}, {0.8, false, &CodeSearch::readRowsTurned<60>},
    };
    return all;
}

void CodeSearch::readCopy() {
    finder.findBars(copy, changedLines, true, found);
    finder.findMatrices(copy, found);
}

template <int percent>
void CodeSearch::readScaled() {
    makeScaled(middle, percent / 100.0, copy);
    readCopy();
}

template <int percent>
void CodeSearch::readSharp() {
    if (percent == 100) {
        makeSharper(middle, copy);
    } else {
        makeScaled(middle, percent / 100.0, secondCopy);
        makeSharper(secondCopy, copy);
    }
    readCopy();
}

/// Between the angles at which every picture is read, for codes that are long and low.
template <int degrees>
void CodeSearch::readBarsBetween() {
    for (const int more : {0, 90}) {
        readBarsAt(*whole, degrees + more, 1);
    }
}

/// For bars so narrow that they fade when they are turned.
void CodeSearch::readBarsStretched() {
    for (const int degrees : {30, 60, 120, 150}) {
        readBarsAt(middle, degrees, 2);
    }
}

/// White bars on black.
void CodeSearch::readInvertedBars() {
    makeInverted(*whole, copy);
    finder.findBars(copy, changedLines, true, found);
}

void CodeSearch::readInvertedSlanted() {
    constexpr int rows = 96;
    makeInverted(middle, secondCopy);
    for (const int degrees : {30, 60, 120, 150}) {
        makeTurned(secondCopy, degrees, rows, 1, copy);
        finder.findBars(copy, sureLines, false, found);
    }
}

/// Codes of stacked rows are read where they hardly slant, and some Data Matrix codes are not where they stand on a
/// corner.
template <int degrees>
void CodeSearch::readRowsTurned() {
    constexpr auto formats = degrees == 45 ? ZXing::BarcodeFormat::PDF417 | ZXing::BarcodeFormat::DataMatrix
                                           : ZXing::BarcodeFormats(ZXing::BarcodeFormat::PDF417);
    if (finder.isAskedFor(formats)) {
        makeTurned(middle, degrees, middle.width + middle.height, 1, copy);
        finder.findMatrices(copy, formats, found);
    }
}

/// Data Matrix codes are read where they are near the middle.
template <int row>
void CodeSearch::readWindows() {
    constexpr int smallest = 64;
    if (!finder.isAskedFor(ZXing::BarcodeFormat::DataMatrix) || std::min(whole->width, whole->height) < 2 * smallest) {
        return;
    }
    for (const int column : {1, 0, 2}) {
        makeCropped(*whole, column * whole->width / 4, row * whole->height / 4, whole->width / 2, whole->height / 2,
                    copy);
        finder.findMatrices(copy, ZXing::BarcodeFormat::DataMatrix, found);
    }
}

void CodeSearch::readInverted() {
    makeInverted(middle, copy);
    finder.findMatrices(copy, found);
}

/// Few rows, each the average of those that it stands for.
void CodeSearch::readSmoothed() {
    makeSmoothRows(middle, 5, copy);
    finder.findBars(copy, changedLines, false, found);
    makeTurned(middle, 90, middle.width, 1, secondCopy);
    makeSmoothRows(secondCopy, 5, copy);
    finder.findBars(copy, changedLines, false, found);
}

void CodeSearch::readBordered() {
    constexpr int border = 16;
    makeBordered(middle, border, copy);
    readCopy();
}

/// Aztec codes are read where they stand upright in the middle.
void CodeSearch::readBullseyes() {
    if (!finder.isAskedFor(ZXing::BarcodeFormat::Aztec)) {
        return;
    }
    constexpr std::size_t most = 2;
    constexpr double module = 6.5;
    for (const Bullseye& bullseye : findBullseyes(*whole, most)) {
        for (const int modules : {41, 103}) {
            for (int degrees = 0; degrees < 90 && found.empty(); degrees += 15) {
                makeWindow(*whole, bullseye.x, bullseye.y, degrees, module / bullseye.module,
                           static_cast<int>(modules * module), copy);
                finder.findMatrices(copy, ZXing::BarcodeFormat::Aztec, found);
            }
        }
    }
}

} // namespace quorvane::capture
