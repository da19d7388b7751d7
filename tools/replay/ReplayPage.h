#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/replay/ReplayListener.h"
#include "tools/replay/ReplayService.h"
#include "tools/replay/ReplaySummary.h"

namespace quorvane::tool {

/// A replay as one HTML page that needs no network: a map, a timeline to scrub, what happened, and the summary. Keeps
/// the whole way in memory.
class ReplayPage : public ReplayListener {
public:
    /// @p theTitle is text.
    explicit ReplayPage(std::string theTitle) : title(std::move(theTitle)) {}

    void recorded(const platform::Location& fix) override;
    void observed(platform::Date now, const observed::Observation& observation) override;

    [[nodiscard]] std::string html(const std::vector<ReplaySummary>& summaries, const KnownPlaces& places) const;

private:
    /// Something at one place and moment.
    struct Mark {
        platform::Date time;
        platform::Coordinate place;
        std::string kind;
        std::string words;
    };
    struct Fence {
        platform::Date placed;
        std::optional<platform::Date> removed;
        platform::CircularRegion region;
    };

    /// From the first fix, in seconds, as text.
    [[nodiscard]] std::string offset(platform::Date moment) const;
    [[nodiscard]] std::string attributes(std::string_view kind, platform::Date time) const;
    [[nodiscard]] std::vector<platform::Coordinate> points() const;
    void observe(platform::Date time, const observed::Fix& fix);
    void observe(platform::Date time, const observed::Geofence& fence);
    void observe(platform::Date time, const observed::Sync& sync);
    [[nodiscard]] std::string map(const KnownPlaces& places) const;
    [[nodiscard]] std::string happenings() const;
    [[nodiscard]] std::string data() const;
    [[nodiscard]] platform::Date end() const;

    const std::string title;
    std::vector<platform::Location> way;
    std::vector<Mark> fixes;
    std::vector<Mark> stops;
    std::vector<Mark> events;
    std::vector<Fence> fences;
    platform::Date last;
};

} // namespace quorvane::tool
