#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "testing/JSONScanner.h"
#include "testing/TrackPoints.h"

namespace quorvane::testing {

/// The positions of a GeoJSON file; `TrackReader.h` says of which geometries, and where their times are looked for.
///
/// Positions and times stand in two lists, either of which may come first. Three scanners go through the file side by
/// side, so that neither list has to be kept: one ahead, to see what a feature has, and one for each list.
class GeoJSONPoints : public TrackPoints {
public:
    explicit GeoJSONPoints(const TrackOrigin& origin) : aheadInput(origin), positionInput(origin), timeInput(origin) {}

    [[nodiscard]] bool next(TrackPoint& point) override;
    [[nodiscard]] std::string missing() const override { return "has no Point or LineString with a position"; }

private:
    using Token = JSONScanner::Token;
    enum class Level { root, feature, geometry, properties, coordinateProperties };

    /// What is known of the feature in hand. Offsets are those of a list's opening bracket.
    struct Feature {
        std::string type;
        std::string geometryType;
        std::optional<std::uint64_t> positions;
        std::optional<std::uint64_t> times;
        /// Of the first position.
        std::string time;
        std::string accuracy;
        std::uint64_t accuracyLine = 0;
        std::uint64_t timeLine = 0;
    };

    [[nodiscard]] bool hasPoints() const;
    /// Takes the next feature that has points, and puts the other scanners at its lists.
    bool toFeature();
    bool members(Level level);
    bool member(Level level, const std::string& name, Token first);
    void property(const std::string& name, Token first);

    /// False: there is none left, or an error.
    bool position(TrackPoint& point);
    bool restOfPosition();
    /// Gives @p point its time. False: there is none left, or an error.
    bool time(TrackPoint& point);
    bool malformed(const TrackInput& input, const JSONScanner& scanner);

    TrackInput aheadInput;
    TrackInput positionInput;
    TrackInput timeInput;
    JSONScanner ahead{aheadInput};
    std::optional<JSONScanner> positions;
    std::optional<JSONScanner> times;
    Feature feature;
    bool isInFeatures = false;
    /// Of the feature in hand.
    bool hadPosition = false;
};

} // namespace quorvane::testing
