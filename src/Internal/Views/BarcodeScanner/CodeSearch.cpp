#include "Internal/Views/BarcodeScanner/CodeSearch.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <tuple>

#include "Internal/Views/BarcodeScanner/PictureCopies.h"

namespace quorvane::capture {
namespace {

constexpr CodeFinder::Lines wholeLines{2, 3};
/// A line across a corner of a code sees a part of it, which is read as a whole one now and then.
constexpr CodeFinder::Lines slantedLines{2, 5};
constexpr CodeFinder::Lines changedLines{3, 5};
constexpr int slantedRows = 112;

/// What is read at once of a picture.
constexpr std::size_t mostPixels = 2'100'000;
constexpr double usualPixels = 1280.0 * 720;
/// What copies are made from.
constexpr double middlePixels = 200'000;

} // namespace

const std::vector<CodeSearch::Attempt>& CodeSearch::attempts() {
    static const std::vector<Attempt> all{
        {1, &CodeSearch::searchInverted},
        {2.25, &CodeSearch::searchScaled<15>},
        {1, &CodeSearch::searchSharp},
        {0.45, &CodeSearch::searchScaled<7>},
        {1, &CodeSearch::searchBordered},
        {1, &CodeSearch::searchSmoothed},
        {4, &CodeSearch::searchSharpScaled<20>},
        {0.7, &CodeSearch::searchMoreSlanted<15>},
        {0.7, &CodeSearch::searchMoreSlanted<45>},
        {0.7, &CodeSearch::searchMoreSlanted<75>},
    };
    return all;
}

Sightings CodeSearch::search(const GrayPicture& picture) {
    found.clear();
    if (picture.isEmpty()) {
        return {};
    }
    whole = &picture;
    const auto factor = std::ceil(std::sqrt(static_cast<double>(picture.count()) / mostPixels));
    if (factor > 1 && makeReduced(picture, static_cast<int>(factor), reduced)) {
        whole = &reduced;
    }
    searchWhole();
    if (found.empty()) {
        searchSlanted(0);
    }
    if (found.empty()) {
        searchChanged();
    }
    const double middleX = picture.width / 2.0;
    const double middleY = picture.height / 2.0;
    const auto order = [&](const Sighting& sighting) {
        const double reach = std::sqrt(sighting.area) / 2;
        const double distance = std::hypot(sighting.x - middleX, sighting.y - middleY);
        return std::tuple(!sighting.barcode.text.has_value(), std::max(0.0, distance - reach), -sighting.area);
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](const Sighting& a, const Sighting& b) { return order(a) < order(b); });
    return found;
}

void CodeSearch::searchWhole() {
    finder.findBars(*whole, wholeLines, true, found);
    finder.findMatrices(*whole, found);
    if (found.empty() && makeReduced(*whole, 2, copy)) {
        finder.findMatrices(copy, found);
    }
    if (found.empty() && makeReduced(*whole, 3, copy)) {
        readCopy();
    }
}

void CodeSearch::searchSlanted(double offset) {
    for (const int degrees : {30, 60, 120, 150}) {
        makeTurned(*whole, degrees + offset, slantedRows, copy);
        finder.findBars(copy, slantedLines, false, found);
    }
}

void CodeSearch::searchChanged() {
    const double scale = std::min(1.0, std::sqrt(middlePixels / static_cast<double>(whole->count())));
    const int width = std::max(1, static_cast<int>(whole->width * scale));
    const int height = std::max(1, static_cast<int>(whole->height * scale));
    makeCropped(*whole, (whole->width - width) / 2, (whole->height - height) / 2, width, height, middle);
    double rest = std::max(0.25 * usualPixels, 1.8 * usualPixels - 1.6 * static_cast<double>(whole->count()));
    for (std::size_t tried = 0; tried < attempts().size() && rest > 0; ++tried) {
        const Attempt& attempt = attempts()[next];
        rest -= attempt.cost * static_cast<double>(middle.count());
        (this->*attempt.run)();
        if (!found.empty()) {
            return;
        }
        next = (next + 1) % attempts().size();
    }
}

template <int tenths>
void CodeSearch::searchScaled() {
    makeScaled(middle, tenths / 10.0, copy);
    readCopy();
}

template <int tenths>
void CodeSearch::searchSharpScaled() {
    makeScaled(middle, tenths / 10.0, secondCopy);
    makeSharper(secondCopy, copy);
    readCopy();
}

template <int degrees>
void CodeSearch::searchMoreSlanted() {
    for (const int more : {0, 90}) {
        makeTurned(middle, degrees + more, 3 * slantedRows, copy);
        finder.findBars(copy, slantedLines, false, found);
    }
}

void CodeSearch::searchInverted() {
    makeInverted(middle, copy);
    readCopy();
}

void CodeSearch::searchSharp() {
    makeSharper(middle, copy);
    readCopy();
}

void CodeSearch::searchSmoothed() {
    for (const int degrees : {0, 90}) {
        makeTurned(middle, degrees, 40, copy);
        finder.findBars(copy, changedLines, false, found);
    }
}

void CodeSearch::searchBordered() {
    makeBordered(middle, 24, copy);
    readCopy();
}

void CodeSearch::readCopy() {
    finder.findBars(copy, changedLines, true, found);
    finder.findMatrices(copy, found);
}

} // namespace quorvane::capture
