#include "Internal/Views/BarcodeScanner/Bullseye.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace quorvane::capture {
namespace {

/// A line through the middle meets the rings within the outermost black one seven times: white, black, ..., white.
constexpr int ringCount = 7;
constexpr int middleRing = ringCount / 2;

using Runs = std::array<int, ringCount>;

/// Runs that are about as wide as each other.
bool areEven(const Runs& runs) {
    int total = 0;
    for (const int run : runs) {
        total += run;
    }
    const double module = static_cast<double>(total) / ringCount;
    const double tolerance = std::max(0.9, module * 0.5);
    return total >= 2 * ringCount &&
           std::all_of(runs.begin(), runs.end(), [&](int run) { return std::abs(run - module) <= tolerance; });
}

/// A straight line of pixels.
struct Line {
    const std::uint8_t* first;
    std::ptrdiff_t step;
    int count;

    [[nodiscard]] bool isBlack(int at, int threshold) const { return first[at * step] < threshold; }
};

struct Crossing {
    double middle;
    double module;
};

/// The rings around the black pixel at @p at.
std::optional<Crossing> crossingAt(const Line& line, int at, int threshold) {
    Runs runs{};
    const auto count = [&](int direction) {
        bool isBlack = line.isBlack(at, threshold);
        int ring = middleRing;
        int pixel = direction > 0 ? at : at - 1;
        for (; pixel >= 0 && pixel < line.count; pixel += direction) {
            if (line.isBlack(pixel, threshold) != isBlack) {
                isBlack = !isBlack;
                ring += direction;
                if (ring < 0 || ring >= ringCount) {
                    return pixel;
                }
            }
            ++runs[static_cast<std::size_t>(ring)];
        }
        return pixel;
    };
    if (!line.isBlack(at, threshold)) {
        return std::nullopt;
    }
    const int end = count(1);
    const int begin = count(-1);
    if (!areEven(runs)) {
        return std::nullopt;
    }
    return Crossing{(begin + end) / 2.0, static_cast<double>(end - begin - 1) / ringCount};
}

/// What is seen along a row may be rings: are they, along the column and again along the row through the middle?
std::optional<Bullseye> bullseyeAt(const GrayPicture& picture, int x, int y, int threshold) {
    const Line column{picture.row(0) + x, picture.width, picture.height};
    const auto down = crossingAt(column, y, threshold);
    if (!down) {
        return std::nullopt;
    }
    const int middleRow = std::clamp(static_cast<int>(std::lround(down->middle)), 0, picture.height - 1);
    const Line row{picture.row(middleRow), 1, picture.width};
    const auto across = crossingAt(row, x, threshold);
    if (!across || across->module > 1.6 * down->module || down->module > 1.6 * across->module) {
        return std::nullopt;
    }
    return Bullseye{across->middle, down->middle, (across->module + down->module) / 2};
}

/// Goes through the runs of a row, each pixel compared with the average of those before and after it.
class RowSearch {
public:
    RowSearch(const GrayPicture& thePicture, std::vector<Bullseye>& theFound, std::size_t theMost)
        : picture(thePicture), found(theFound), most(theMost) {}

    void search(int y) {
        constexpr int reach = 32;
        const std::uint8_t* const row = picture.row(y);
        Runs runs{};
        int sum = 0;
        for (int x = 0; x < std::min(reach, picture.width); ++x) {
            sum += row[x];
        }
        bool wasBlack = false;
        int run = 0;
        for (int x = 0; x < picture.width; ++x) {
            sum += x + reach < picture.width ? row[x + reach] : 0;
            sum -= x - reach > 0 ? row[x - reach - 1] : 0;
            const int threshold = sum / (std::min(x + reach, picture.width - 1) - std::max(x - reach, 0) + 1);
            // What is nearly as bright as its surroundings is white, so that a plain picture has no runs.
            const bool isBlack = row[x] < threshold - 4;
            if (isBlack == wasBlack) {
                ++run;
                continue;
            }
            std::rotate(runs.begin(), runs.begin() + 1, runs.end());
            runs.back() = run;
            if (!wasBlack && areEven(runs)) {
                check(runs, x, y);
            }
            wasBlack = isBlack;
            run = 1;
        }
    }

private:
    void check(const Runs& runs, int end, int y) {
        int begin = end;
        for (int ring = ringCount - 1; ring > middleRing; --ring) {
            begin -= runs[static_cast<std::size_t>(ring)];
        }
        const int x = begin - runs[middleRing] / 2 - 1;
        if (x < 0 || found.size() >= most) {
            return;
        }
        // Between the middle ring and the white one beside it.
        const int threshold =
            (picture.row(y)[x] + picture.row(y)[std::min(begin + runs[middleRing + 1] / 2, end - 1)]) / 2;
        const auto bullseye = bullseyeAt(picture, x, y, threshold);
        if (!bullseye) {
            return;
        }
        const auto isKnown = [&](const Bullseye& other) {
            return std::hypot(other.x - bullseye->x, other.y - bullseye->y) < 3 * bullseye->module;
        };
        if (std::none_of(found.begin(), found.end(), isKnown)) {
            found.push_back(*bullseye);
        }
    }

    const GrayPicture& picture;
    std::vector<Bullseye>& found;
    std::size_t most;
};

} // namespace

std::vector<Bullseye> findBullseyes(const GrayPicture& picture, std::size_t most) {
    std::vector<Bullseye> found;
    RowSearch search(picture, found, most);
    for (int y = 0; y < picture.height; y += 2) {
        search.search(y);
    }
    return found;
}

} // namespace quorvane::capture
