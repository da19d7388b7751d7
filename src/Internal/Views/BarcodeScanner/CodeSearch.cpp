#include "Internal/Views/BarcodeScanner/CodeSearch.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "Internal/Views/BarcodeScanner/PictureCopies.h"

namespace quorvane::capture {
namespace {

constexpr CodeFinder::Lines wholeLines{2, 4};
/// As many as tell a code of bars from its surroundings.
constexpr int slantedRows = 96;
/// What is read at once of a picture; of more, the pixels are averaged.
constexpr double mostPixelsAtOnce = 2'100'000;
constexpr double usualPixels = 1280.0 * 720;
constexpr double mostMiddlePixels = 400'000;

} // namespace

Sightings CodeSearch::search(const GrayPicture& picture) {
    found.clear();
    if (picture.isEmpty()) {
        return {};
    }
    whole = &picture;
    const double factor = std::ceil(std::sqrt(static_cast<double>(picture.count()) / mostPixelsAtOnce));
    if (factor > 1 && makeReduced(picture, static_cast<int>(factor), reduced)) {
        whole = &reduced;
    }
    searchAsItIs();
    if (found.empty()) {
        searchSlanted();
    }
    if (found.empty()) {
        searchChanged();
    }
    // About as near to the middle is as near; of those the smaller one is aimed at, as it may stand inside the other.
    const double near = std::max(1.0, std::min(picture.width, picture.height) / 8.0);
    const auto order = [&](const Sighting& sighting) {
        const double distance = std::hypot(sighting.x - picture.width / 2.0, sighting.y - picture.height / 2.0);
        return std::tuple(!sighting.barcode.text.has_value(), std::floor(distance / near), sighting.area);
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](const Sighting& a, const Sighting& b) { return order(a) < order(b); });
    return found;
}

void CodeSearch::searchAsItIs() {
    finder.findBars(*whole, wholeLines, true, found);
    completeUnsure(*whole, 1);
    finder.findMatrices(*whole, found);
    if (found.empty() && makeReduced(*whole, 2, copy)) {
        finder.findMatrices(copy, ZXing::BarcodeFormat::QRCode, found);
    }
}

void CodeSearch::searchSlanted() {
    for (const int degrees : {30, 60, 120, 150}) {
        readBarsAt(*whole, degrees, 1);
    }
}

void CodeSearch::readBarsAt(const GrayPicture& picture, double degrees, double stretch) {
    if (found.empty()) {
        makeTurned(picture, degrees, slantedRows, stretch, copy);
        finder.findBars(copy, wholeLines, false, found);
        completeUnsure(picture, stretch);
    }
}

/// A line across a corner of a code sees a part of it, which looks like a whole one now and then. A line that slants as
/// the code does sees all of it.
void CodeSearch::completeUnsure(const GrayPicture& picture, double stretch) {
    if (found.size() != 1 || found.front().isSure()) {
        return;
    }
    const double angle = found.front().angle;
    for (const double more : {-24.0, -16.0, -8.0, 8.0, 16.0, 24.0}) {
        makeTurned(picture, angle + more, 2 * slantedRows, stretch, copy);
        finder.findUnsureBars(copy, wholeLines.unsure, found);
    }
    const auto isShorter = [](const Sighting& a, const Sighting& b) { return a.content.size() < b.content.size(); };
    const auto longest = std::max_element(found.begin(), found.end(), isShorter);
    const std::size_t length = longest->content.size();
    const auto isAsLong = [&](const Sighting& sighting) { return sighting.content.size() == length; };
    Sightings complete{*longest};
    // Two of a length cannot both be.
    found = std::count_if(found.begin(), found.end(), isAsLong) == 1 ? std::move(complete) : Sightings();
}

void CodeSearch::searchChanged() {
    // Together with what went before, less than twice what the usual picture costs as it is.
    const auto size = static_cast<double>(whole->count());
    double rest = std::max(0.12 * size, 0.9 * usualPixels - 0.8 * size);
    for (std::size_t tried = 0; tried < attempts().size() && rest > 0.02 * usualPixels; ++tried) {
        const Attempt& attempt = attempts()[next];
        const double before = std::exchange(repeatedPixels, 0);
        const double pixels = before > 0 ? before : std::min(mostMiddlePixels, rest / attempt.cost);
        if (attempt.isForWhole) {
            rest -= attempt.cost * size;
        } else {
            cropMiddle(pixels);
            rest -= attempt.cost * static_cast<double>(middle.count());
        }
        (this->*attempt.run)();
        if (!found.empty()) {
            repeatedPixels = pixels;
            return;
        }
        next = (next + 1) % attempts().size();
    }
}

void CodeSearch::cropMiddle(double pixels) {
    const double scale = std::min(1.0, std::sqrt(pixels / static_cast<double>(whole->count())));
    const int width = std::max(1, static_cast<int>(whole->width * scale));
    const int height = std::max(1, static_cast<int>(whole->height * scale));
    makeCropped(*whole, (whole->width - width) / 2, (whole->height - height) / 2, width, height, middle);
}

} // namespace quorvane::capture
