#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

#include "testing/TrackPoints.h"

namespace quorvane::testing {

/// The fixes of a receiver's NMEA 0183 sentences; `TrackReader.h` says of which.
class NMEAPoints : public TrackPoints {
public:
    explicit NMEAPoints(const TrackOrigin& origin) : NMEAPoints(origin, firstDate(origin)) {}

    [[nodiscard]] bool next(TrackPoint& point) override;
    [[nodiscard]] std::string missing() const override;

private:
    using Day = std::chrono::sys_days;
    using TimeOfDay = std::chrono::nanoseconds;

    /// What the sentences of one moment say together.
    struct Epoch {
        TimeOfDay time{0};
        std::optional<Day> day;
        bool hasFix = false;
        /// A sentence said that there is no fix.
        bool isVoid = false;
        TrackPoint point;
    };

    struct Moment {
        Day day;
        TimeOfDay time{0};
    };

    NMEAPoints(const TrackOrigin& origin, const std::optional<Moment>& first);

    /// The first that a file tells. It holds for what comes before it, too.
    [[nodiscard]] static std::optional<Moment> firstDate(const TrackOrigin& origin);

    /// Takes the next sentence whose checksum is right apart into `fields`.
    bool toSentence();
    void split(std::string_view text);
    [[nodiscard]] std::string_view field(std::size_t index) const;
    [[nodiscard]] bool isSentence(std::string_view kind) const;

    bool timeOfDay(std::string_view text, TimeOfDay& time);
    bool date(std::string_view text, std::optional<Day>& day);
    bool degrees(std::string_view what, std::size_t index, std::string_view positive, std::string_view negative,
                 int bound, double& value);
    bool position(std::size_t index, TrackPoint& point);
    /// Adds what the sentence in hand says to the epoch.
    bool add(Epoch& epoch);
    /// Dates an epoch that is complete; answers whether it holds a fix.
    bool finish(Epoch& epoch);

    TrackInput input;
    std::array<std::string_view, 24> fields;
    std::size_t fieldCount = 0;
    std::uint64_t line = 0;
    std::size_t wrongSentences = 0;
    std::optional<Epoch> pending;
    /// Of the epoch before; of the first date in the file until one has come.
    Moment last;
    bool isDated = false;
};

} // namespace quorvane::testing
