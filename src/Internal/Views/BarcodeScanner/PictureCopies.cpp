#include "Internal/Views/BarcodeScanner/PictureCopies.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <numbers>
#include <utility>

namespace quorvane::capture {
namespace {

Placement composed(const Placement& outer, const Placement& inner) {
    return {outer.x(inner.originX, inner.originY),
            outer.y(inner.originX, inner.originY),
            inner.rightX * outer.rightX + inner.rightY * outer.downX,
            inner.rightX * outer.rightY + inner.rightY * outer.downY,
            inner.downX * outer.rightX + inner.downY * outer.downX,
            inner.downX * outer.rightY + inner.downY * outer.downY};
}

constexpr int fractionBits = 16;
constexpr double fixedOne = 1 << fractionBits;

/// Of the columns `[0, count)` of a row, those at which `begin + column * step` lies in `[0, size - 1]`.
std::pair<int, int> columnsInside(double begin, double step, int size, int count) {
    const double last = size - 1;
    if (std::abs(step) < 1e-9) {
        return begin >= 0 && begin <= last ? std::pair(0, count) : std::pair(0, 0);
    }
    double low = -begin / step;
    double high = (last - begin) / step;
    if (low > high) {
        std::swap(low, high);
    }
    const double first = std::clamp(std::ceil(low + 1e-6), 0.0, static_cast<double>(count));
    const double end = std::clamp(std::floor(high - 1e-6) + 1, first, static_cast<double>(count));
    return {static_cast<int>(first), static_cast<int>(end)};
}

std::uint8_t between(const GrayPicture& picture, std::int64_t x, std::int64_t y) {
    constexpr std::int64_t mask = (std::int64_t{1} << fractionBits) - 1;
    const int column = static_cast<int>(x >> fractionBits);
    const int line = static_cast<int>(y >> fractionBits);
    const int right = column + 1 < picture.width ? 1 : 0;
    const std::uint8_t* const upper = picture.row(line) + column;
    const std::uint8_t* const lower = line + 1 < picture.height ? upper + picture.width : upper;
    const int partX = static_cast<int>((x & mask) >> 8);
    const int partY = static_cast<int>((y & mask) >> 8);
    const int top = upper[0] * (256 - partX) + upper[right] * partX;
    const int bottom = lower[0] * (256 - partX) + lower[right] * partX;
    return static_cast<std::uint8_t>((top * (256 - partY) + bottom * partY + (1 << 15)) >> 16);
}

/// Fills the copy, whose size and placement in the picture are given, from the picture; beyond the picture's border a
/// row goes on as it ended.
void resample(const GrayPicture& picture, const Placement& placement, GrayPicture& copy) {
    const auto stepX = static_cast<std::int64_t>(std::llround(placement.rightX * fixedOne));
    const auto stepY = static_cast<std::int64_t>(std::llround(placement.rightY * fixedOne));
    for (int line = 0; line < copy.height; ++line) {
        std::uint8_t* const to = copy.row(line);
        const double beginX = placement.x(0, line);
        const double beginY = placement.y(0, line);
        const auto insideX = columnsInside(beginX, static_cast<double>(stepX) / fixedOne, picture.width, copy.width);
        const auto insideY = columnsInside(beginY, static_cast<double>(stepY) / fixedOne, picture.height, copy.width);
        const int first = std::max(insideX.first, insideY.first);
        const int end = std::min(insideX.second, insideY.second);
        if (first >= end) {
            std::memset(to, 255, static_cast<std::size_t>(copy.width));
            continue;
        }
        const std::int64_t largestX = (std::int64_t{picture.width} - 1) << fractionBits;
        const std::int64_t largestY = (std::int64_t{picture.height} - 1) << fractionBits;
        std::int64_t x = std::llround(beginX * fixedOne) + first * stepX;
        std::int64_t y = std::llround(beginY * fixedOne) + first * stepY;
        for (int column = first; column < end; ++column, x += stepX, y += stepY) {
            to[column] =
                between(picture, std::clamp<std::int64_t>(x, 0, largestX), std::clamp<std::int64_t>(y, 0, largestY));
        }
        std::memset(to, to[first], static_cast<std::size_t>(first));
        std::memset(to + end, to[end - 1], static_cast<std::size_t>(copy.width - end));
    }
    copy.placement = composed(picture.placement, placement);
}

/// The middle of the copy lies at a point, its rows at an angle and so far from each other, and so do its columns.
Placement around(double x, double y, double angle, double columnStep, double rowStep, const GrayPicture& copy) {
    Placement placement{0,
                        0,
                        std::cos(angle) * columnStep,
                        std::sin(angle) * columnStep,
                        -std::sin(angle) * rowStep,
                        std::cos(angle) * rowStep};
    const double column = (copy.width - 1) / 2.0;
    const double row = (copy.height - 1) / 2.0;
    placement.originX = x - placement.x(column, row);
    placement.originY = y - placement.y(column, row);
    return placement;
}

} // namespace

bool makeReduced(const GrayPicture& picture, int factor, GrayPicture& copy) {
    if (picture.width < factor || picture.height < factor) {
        return false;
    }
    copy.resize(picture.width / factor, picture.height / factor);
    const unsigned area = static_cast<unsigned>(factor * factor);
    const unsigned reciprocal = (1U << 16) / area;
    for (int y = 0; y < copy.height; ++y) {
        std::uint8_t* const to = copy.row(y);
        for (int x = 0; x < copy.width; ++x) {
            unsigned sum = area / 2;
            for (int line = 0; line < factor; ++line) {
                const std::uint8_t* const from = picture.row(y * factor + line) + x * factor;
                for (int column = 0; column < factor; ++column) {
                    sum += from[column];
                }
            }
            to[x] = static_cast<std::uint8_t>((sum * reciprocal) >> 16);
        }
    }
    const double half = (factor - 1) / 2.0;
    const auto step = static_cast<double>(factor);
    copy.placement = composed(picture.placement, {half, half, step, 0, 0, step});
    return true;
}

void makeScaled(const GrayPicture& picture, double scale, GrayPicture& copy) {
    copy.resize(std::max(1, static_cast<int>(picture.width * scale)),
                std::max(1, static_cast<int>(picture.height * scale)));
    const double step = 1 / scale;
    const double origin = (step - 1) / 2;
    resample(picture, {origin, origin, step, 0, 0, step}, copy);
}

void makeTurned(const GrayPicture& picture, double degrees, int rows, double stretch, GrayPicture& copy) {
    const double angle = degrees * std::numbers::pi / 180;
    const double cosine = std::abs(std::cos(angle));
    const double sine = std::abs(std::sin(angle));
    const double across = picture.width * sine + picture.height * cosine;
    copy.resize(std::max(1, static_cast<int>(std::ceil((picture.width * cosine + picture.height * sine) * stretch))),
                std::clamp(static_cast<int>(std::ceil(across)), 1, std::max(1, rows)));
    const Placement placement =
        around((picture.width - 1) / 2.0, (picture.height - 1) / 2.0, angle, 1 / stretch, across / copy.height, copy);
    resample(picture, placement, copy);
}

void makeWindow(const GrayPicture& picture, double x, double y, double degrees, double scale, int side,
                GrayPicture& copy) {
    copy.resize(side, side);
    resample(picture, around(x, y, degrees * std::numbers::pi / 180, 1 / scale, 1 / scale, copy), copy);
}

void makeInverted(const GrayPicture& picture, GrayPicture& copy) {
    copy.resize(picture.width, picture.height);
    std::transform(picture.pixels.begin(), picture.pixels.end(), copy.pixels.begin(),
                   [](std::uint8_t pixel) { return static_cast<std::uint8_t>(255 - pixel); });
    copy.placement = picture.placement;
}

void makeSharper(const GrayPicture& picture, GrayPicture& copy) {
    copy.resize(picture.width, picture.height);
    for (int y = 0; y < picture.height; ++y) {
        const std::array<const std::uint8_t*, 3> rows{picture.row(std::max(y - 1, 0)), picture.row(y),
                                                      picture.row(std::min(y + 1, picture.height - 1))};
        std::uint8_t* const to = copy.row(y);
        for (int x = 0; x < picture.width; ++x) {
            const int left = std::max(x - 1, 0);
            const int right = std::min(x + 1, picture.width - 1);
            int sum = 0;
            for (const std::uint8_t* const row : rows) {
                sum += row[left] + row[x] + row[right];
            }
            to[x] = static_cast<std::uint8_t>(std::clamp((18 * rows[1][x] - sum) / 9, 0, 255));
        }
    }
    copy.placement = picture.placement;
}

void makeSmoothRows(const GrayPicture& picture, int count, GrayPicture& copy) {
    copy.resize(picture.width, std::max(1, picture.height / count));
    std::vector<int> sums(static_cast<std::size_t>(picture.width));
    for (int y = 0; y < copy.height; ++y) {
        const int rows = std::min(count, picture.height);
        std::fill(sums.begin(), sums.end(), rows / 2);
        for (int line = 0; line < rows; ++line) {
            std::transform(sums.begin(), sums.end(), picture.row(y * count + line), sums.begin(), std::plus<>());
        }
        std::transform(sums.begin(), sums.end(), copy.row(y),
                       [&](int sum) { return static_cast<std::uint8_t>(sum / rows); });
    }
    copy.placement = composed(picture.placement, {0, (count - 1) / 2.0, 1, 0, 0, static_cast<double>(count)});
}

void makeBordered(const GrayPicture& picture, int border, GrayPicture& copy) {
    copy.resize(picture.width + 2 * border, picture.height + 2 * border);
    const std::uint8_t* const first = picture.row(0);
    const std::uint8_t* const last = picture.row(picture.height - 1);
    const std::uint8_t bright =
        std::max(*std::max_element(first, first + picture.width), *std::max_element(last, last + picture.width));
    std::fill(copy.pixels.begin(), copy.pixels.end(), bright);
    for (int y = 0; y < picture.height; ++y) {
        std::memcpy(copy.row(y + border) + border, picture.row(y), static_cast<std::size_t>(picture.width));
    }
    const auto shift = static_cast<double>(-border);
    copy.placement = composed(picture.placement, {shift, shift, 1, 0, 0, 1});
}

void makeCropped(const GrayPicture& picture, int left, int top, int width, int height, GrayPicture& copy) {
    copy.resize(width, height);
    for (int y = 0; y < height; ++y) {
        std::memcpy(copy.row(y), picture.row(top + y) + left, static_cast<std::size_t>(width));
    }
    copy.placement = composed(picture.placement, {static_cast<double>(left), static_cast<double>(top), 1, 0, 0, 1});
}

} // namespace quorvane::capture
