#include "Internal/Views/BarcodeScanner/CodeFinder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <ZXing/ReadBarcode.h>

namespace quorvane::capture {
namespace {

ZXing::ImageView viewOf(const GrayPicture& picture) {
    return {picture.pixels.data(), picture.width, picture.height, ZXing::ImageFormat::Lum};
}

ZXing::DecodeHints hintsFor(ZXing::BarcodeFormats formats) {
    return ZXing::DecodeHints().setFormats(formats).setTryHarder(true).setTryDownscale(false);
}

/// Of the four corners, by the shoelace formula.
double areaOf(const ZXing::Position& corners) {
    double twice = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const ZXing::PointI& from = corners[i];
        const ZXing::PointI& to = corners[(i + 1) % corners.size()];
        twice += static_cast<double>(from.x) * to.y - static_cast<double>(to.x) * from.y;
    }
    return std::abs(twice) / 2;
}

} // namespace

void CodeFinder::findBars(const GrayPicture& picture, Lines lines, bool alsoUpright, Sightings& found) const {
    const auto find = [&](ZXing::BarcodeFormats formats, int count) {
        const auto hints =
            hintsFor(formats).setTryRotate(alsoUpright).setMinLineCount(static_cast<std::uint8_t>(count));
        return formats.empty() ? ZXing::Result() : ZXing::ReadBarcode(viewOf(picture), hints);
    };
    ZXing::Result result = find(lines.unsure > 0 ? asked.bars() : asked.sureBars(), lines.sure);
    if (result.isValid() && result.format() == ZXing::BarcodeFormat::ITF) {
        // Rather believe another one.
        result = find(asked.sureBars(), lines.sure);
        if (!result.isValid()) {
            result = find(ZXing::BarcodeFormat::ITF, lines.unsure);
        }
    }
    if (result.isValid()) {
        add(result, picture, found);
    }
}

void CodeFinder::findUnsureBars(const GrayPicture& picture, int lines, Sightings& found) const {
    const auto hints =
        hintsFor(ZXing::BarcodeFormat::ITF).setTryRotate(false).setMinLineCount(static_cast<std::uint8_t>(lines));
    const ZXing::Result result = ZXing::ReadBarcode(viewOf(picture), hints);
    if (result.isValid()) {
        add(result, picture, found);
    }
}

void CodeFinder::findMatrices(const GrayPicture& picture, ZXing::BarcodeFormats only, Sightings& found) const {
    const ZXing::BarcodeFormats formats = asked.matrices() & only;
    if (formats.empty()) {
        return;
    }
    for (const ZXing::Result& result : ZXing::ReadBarcodes(viewOf(picture), hintsFor(formats))) {
        if (result.isValid()) {
            add(result, picture, found);
        }
    }
}

void CodeFinder::add(const ZXing::Result& result, const GrayPicture& picture, Sightings& found) const {
    const auto type = asked.typeOf(result);
    if (!type) {
        return;
    }
    Sighting sighting;
    sighting.barcode = {*type, textOf(result)};
    sighting.content.assign(result.bytes().begin(), result.bytes().end());
    const Placement& placement = picture.placement;
    double column = 0;
    double row = 0;
    for (const ZXing::PointI& corner : result.position()) {
        column += corner.x / 4.0;
        row += corner.y / 4.0;
    }
    sighting.x = placement.x(column, row);
    sighting.y = placement.y(column, row);
    sighting.area =
        areaOf(result.position()) * std::abs(placement.rightX * placement.downY - placement.rightY * placement.downX);
    const ZXing::PointI along = result.position().topRight() - result.position().topLeft();
    sighting.angle = std::atan2(along.x * placement.rightY + along.y * placement.downY,
                                along.x * placement.rightX + along.y * placement.downX) *
                     180 / std::numbers::pi;
    const auto isKnown = [&](const Sighting& other) { return sighting.agreesWith(other); };
    if (std::none_of(found.begin(), found.end(), isKnown)) {
        found.push_back(std::move(sighting));
    }
}

} // namespace quorvane::capture
