#include "tools/replay/ReplayMap.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "tools/Text.h"

namespace quorvane::tool {
namespace {

constexpr double imageWidth = 600;
constexpr double margin = 24;
/// Below the map, for its scale.
constexpr double footer = 44;
constexpr double metresPerDegree = 111'195;

double northOf(const platform::Coordinate& coordinate) {
    return coordinate.latitude * metresPerDegree;
}

std::string attribute(std::string_view name, double value) {
    return ' ' + std::string(name) + "=\"" + tenths(value) + '"';
}

std::string titled(std::string_view title) {
    return "><title>" + std::string(title) + "</title></circle>\n";
}

/// The largest of 1, 2 and 5 times a power of ten that is not more than @p value.
double roundNumber(double value) {
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {5.0, 2.0}) {
        if (step * power <= value) {
            return step * power;
        }
    }
    return power;
}

} // namespace

std::string tenths(double value) {
    std::array<char, 340> text{};
    const double shown = std::abs(value) < 0.05 ? 0.0 : value;
    const auto end = std::to_chars(text.begin(), text.end(), shown, std::chars_format::fixed, 1).ptr;
    return {text.begin(), end};
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : printable(text)) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

ReplayMap::ReplayMap(const std::vector<platform::Coordinate>& points)
    : origin(points.empty() ? platform::Coordinate{} : points.front()) {
    double south = northOf(origin);
    double east = 0;
    north = south;
    for (const platform::Coordinate& point : points) {
        west = std::min(west, eastOf(point));
        east = std::max(east, eastOf(point));
        south = std::min(south, northOf(point));
        north = std::max(north, northOf(point));
    }
    // Neither a point nor a straight line fills an image.
    constexpr double smallest = 100;
    const double across = std::max({east - west, (north - south) * 0.8, smallest});
    const double down = std::max(north - south, across * 0.5);
    west -= (across - (east - west)) / 2;
    north += (down - (north - south)) / 2;
    unitsPerMetre = (imageWidth - 2 * margin) / across;
    height = down * unitsPerMetre + 2 * margin;
}

double ReplayMap::eastOf(const platform::Coordinate& coordinate) const {
    // Across the date line where that is shorter; at a pole all longitudes are one.
    const double degrees = std::remainder(coordinate.longitude - origin.longitude, 360.0);
    return degrees * metresPerDegree * std::cos(origin.latitude * std::numbers::pi / 180);
}

ReplayMap::Point ReplayMap::at(const platform::Coordinate& coordinate) const {
    return {margin + (eastOf(coordinate) - west) * unitsPerMetre,
            margin + (north - northOf(coordinate)) * unitsPerMetre};
}

bool ReplayMap::holds(const platform::Coordinate& coordinate) const {
    const Point point = at(coordinate);
    return point.x >= 0 && point.x <= imageWidth && point.y >= 0 && point.y <= height;
}

void ReplayMap::line(const std::vector<platform::Coordinate>& points, std::string_view attributes) {
    content += "<polyline " + std::string(attributes) + " points=\"";
    for (const platform::Coordinate& coordinate : points) {
        const Point point = at(coordinate);
        content += tenths(point.x) + ',' + tenths(point.y) + ' ';
    }
    content += "\"/>\n";
}

void ReplayMap::circle(const platform::Coordinate& center, double metres, std::string_view attributes,
                       std::string_view title) {
    const Point point = at(center);
    content += "<circle " + std::string(attributes) + attribute("cx", point.x) + attribute("cy", point.y) +
               attribute("r", metres * unitsPerMetre) + titled(title);
}

void ReplayMap::mark(const platform::Coordinate& place, std::string_view attributes, std::string_view title) {
    const Point point = at(place);
    content +=
        "<circle " + std::string(attributes) + attribute("cx", point.x) + attribute("cy", point.y) + titled(title);
}

void ReplayMap::label(const platform::Coordinate& place, std::string_view text) {
    const Point point = at(place);
    const bool isRight = point.x > imageWidth * 0.7;
    content += "<text class=\"label\"" + attribute("x", point.x + (isRight ? -10 : 10)) + attribute("y", point.y - 8) +
               (isRight ? " text-anchor=\"end\"" : "") + '>' + std::string(text) + "</text>\n";
}

std::string ReplayMap::scaleBar() const {
    const double metres = roundNumber(imageWidth / 3 / unitsPerMetre);
    const double length = metres * unitsPerMetre;
    const double y = height + footer - 14;
    std::string bar = "<path class=\"scale\" d=\"M" + tenths(margin) + ',' + tenths(y - 6) + "v6h" + tenths(length) +
                      "v-6\"/>\n<text class=\"scale-text\"" + attribute("x", margin + length + 8) + attribute("y", y) +
                      '>' + metresText(metres) + "</text>\n";
    const double x = imageWidth - margin - 10;
    bar += "<path class=\"north\" d=\"M" + tenths(x) + ',' + tenths(y - 20) + "l7,20l-7,-5l-7,5z\"/>\n";
    return bar + "<text class=\"scale-text\" text-anchor=\"end\"" + attribute("x", x - 14) + attribute("y", y) +
           ">N</text>\n";
}

std::string ReplayMap::svg() const {
    return "<svg id=\"map\" viewBox=\"0 0 " + tenths(imageWidth) + ' ' + tenths(height + footer) +
           "\" role=\"img\" aria-label=\"Map of the recording, north up\">\n<defs><clipPath id=\"frame\"><rect "
           "width=\"" +
           tenths(imageWidth) + "\" height=\"" + tenths(height) +
           "\"/></clipPath></defs>\n<g clip-path=\"url(#frame)\">\n" + content +
           "<circle id=\"here\" cx=\"0\" cy=\"0\"><title>the phone</title></circle>\n</g>\n" + scaleBar() + "</svg>\n";
}

} // namespace quorvane::tool
