#pragma once

#include <optional>
#include <vector>

#include "testing/TrackPoints.h"
#include "testing/XMLScanner.h"

namespace quorvane::testing {

/// The points of a GPX file, as `GPXReader.h` says which.
class GPXPoints : public TrackPoints {
public:
    explicit GPXPoints(const TrackOrigin& origin) : GPXPoints(origin, bestPoint(origin)) {}

    [[nodiscard]] bool next(TrackPoint& point) override;
    [[nodiscard]] std::string missing() const override { return "has no track, route or waypoint with a point in it"; }

private:
    /// What an element is; of the kinds of points the best comes last.
    enum class Element {
        root,
        name,
        time,
        dilution,
        track,
        segment,
        route,
        anyPoint,
        waypoint,
        routePoint,
        trackPoint
    };
    using Token = XMLScanner::Token;

    GPXPoints(const TrackOrigin& origin, Element theWanted) : input(origin), scanner(input), wanted(theWanted) {}

    /// The kind of points that is handed out: the best that the file has.
    [[nodiscard]] static Element bestPoint(const TrackOrigin& origin);

    /// Takes the next point of the wanted kind, up to the end of its tag.
    bool toPoint();
    bool inPoint(TrackPoint& point);
    bool start();
    void end();
    [[nodiscard]] std::optional<Element> child() const;
    bool position(TrackPoint& point);

    TrackInput input;
    XMLScanner scanner;
    const Element wanted;
    /// The elements around, without those that are passed over.
    std::vector<Element> around;
    /// How many elements are open within one that is passed over, that one included.
    std::size_t passedOver = 0;
    /// The kind of the last point that was come upon.
    Element kind = Element::anyPoint;
};

} // namespace quorvane::testing
