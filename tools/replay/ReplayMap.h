#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Platform/Location.h"

namespace quorvane::tool {

/// @p value with one decimal.
[[nodiscard]] std::string tenths(double value);
/// @p text as it stands in HTML, between tags and in quotes.
[[nodiscard]] std::string escaped(std::string_view text);

/// A map as SVG, drawn from coordinates alone: north is up, and all directions have one scale. It is 600 units wide and
/// shows all the points that it was made for. Of the others `holds` says whether they are on it.
class ReplayMap {
public:
    explicit ReplayMap(const std::vector<platform::Coordinate>& points);

    struct Point {
        double x = 0;
        double y = 0;
    };
    [[nodiscard]] Point at(const platform::Coordinate& coordinate) const;
    [[nodiscard]] bool holds(const platform::Coordinate& coordinate) const;

    /// @p attributes of each element, such as `class="fix"`, and its title, both as they stand in the document.
    void line(const std::vector<platform::Coordinate>& points, std::string_view attributes);
    void circle(const platform::Coordinate& center, double metres, std::string_view attributes, std::string_view title);
    /// A mark of a size that does not depend on the scale.
    void mark(const platform::Coordinate& place, std::string_view attributes, std::string_view title);
    void label(const platform::Coordinate& place, std::string_view text);

    /// The whole image, with its scale and an arrow to the north.
    [[nodiscard]] std::string svg() const;

private:
    [[nodiscard]] std::string scaleBar() const;
    [[nodiscard]] double eastOf(const platform::Coordinate& coordinate) const;

    platform::Coordinate origin;
    /// Metres from the origin.
    double west = 0;
    double north = 0;
    double unitsPerMetre = 1;
    double height = 0;
    std::string content;
};

} // namespace quorvane::tool
