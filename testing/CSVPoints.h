#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "testing/TrackPoints.h"

namespace quorvane::testing {

/// The points of a table of values between commas, one a line; `TrackReader.h` says which columns.
class CSVPoints : public TrackPoints {
public:
    explicit CSVPoints(const TrackOrigin& origin) : input(origin) {}

    [[nodiscard]] bool next(TrackPoint& point) override;
    [[nodiscard]] std::string missing() const override { return "has no line with a position"; }

private:
    enum Column : std::size_t { latitudeColumn, longitudeColumn, timeColumn, accuracyColumn, columnCount };

    /// Takes the next line that is neither blank nor a remark.
    bool toLine();
    /// Takes the line in hand apart into `fields`.
    bool split();
    bool splitQuoted(std::string_view& rest);
    /// Whether the first line names the columns, or is the first of the values.
    bool takeFirstLine();
    bool takeHeader();
    [[nodiscard]] std::string_view field(Column column) const;

    TrackInput input;
    std::string_view lineText;
    std::uint64_t line = 0;
    std::vector<std::string_view> fields;
    /// What a field in quotes says, where that differs from how it stands there.
    std::vector<std::string> unquoted;
    /// Where each column is; none: the table has no such column.
    std::array<std::optional<std::size_t>, columnCount> columns{0, 1, 2, 3};
    std::size_t width = 0;
    std::string firstWidth;
    bool isFirst = true;
};

} // namespace quorvane::testing
