#include "testing/CSVPoints.h"

#include <algorithm>
#include <utility>

#include "testing/TrackReader.h"
#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

std::string counted(std::size_t values) {
    return std::to_string(values) + (values == 1 ? " value" : " values");
}

} // namespace

bool CSVPoints::next(TrackPoint& point) {
    if (!toLine() || (isFirst && !takeFirstLine())) {
        return false;
    }
    // The accuracy, where it is the last column, may be left out.
    const bool isShort = fields.size() + 1 == width && columns[accuracyColumn] == fields.size();
    if (fields.size() != width && !isShort) {
        return fail(input, line, "the line has " + counted(fields.size()) + " where the first has " + firstWidth);
    }
    point = {};
    point.line = line;
    point.fix.horizontalAccuracy = defaultAccuracy;
    return latitude(input, line, field(latitudeColumn), point) &&
           longitude(input, line, field(longitudeColumn), point) && moment(input, line, field(timeColumn), point) &&
           accuracy(input, line, field(accuracyColumn), point);
}

bool CSVPoints::toLine() {
    while (true) {
        line = input.lineNumber();
        const std::optional<std::string_view> next = input.line();
        if (!next) {
            return !input.problem().empty() && fail(input, input.problem());
        }
        lineText = trimmed(*next);
        if (!lineText.empty() && !lineText.starts_with('#')) {
            return split();
        }
    }
}

bool CSVPoints::split() {
    fields.clear();
    unquoted.clear();
    // No move of a text may move what the fields look at.
    unquoted.reserve(static_cast<std::size_t>(std::count(lineText.begin(), lineText.end(), '"')));
    std::string_view rest = lineText;
    while (true) {
        if (trimmed(rest).starts_with('"')) {
            rest = trimmed(rest);
            if (!splitQuoted(rest)) {
                return fail(input, line, "a value in quotes does not end");
            }
        } else {
            const std::size_t comma = rest.find(',');
            fields.push_back(trimmed(rest.substr(0, comma)));
            rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma);
        }
        if (rest.empty()) {
            return true;
        }
        rest.remove_prefix(1);
    }
}

/// Takes a field in quotes, up to the comma behind it. A quote within it stands there twice.
bool CSVPoints::splitQuoted(std::string_view& rest) {
    std::string text;
    std::size_t at = 1;
    while (at < rest.size()) {
        const bool isQuote = rest[at] == '"';
        if (isQuote && rest.substr(at + 1, 1) != "\"") {
            break;
        }
        at += isQuote ? 1 : 0;
        text += rest[at];
        ++at;
    }
    if (at >= rest.size()) {
        return false;
    }
    rest = trimmed(rest.substr(at + 1));
    unquoted.push_back(std::move(text));
    fields.push_back(unquoted.back());
    return rest.empty() || rest.front() == ',';
}

bool CSVPoints::takeFirstLine() {
    isFirst = false;
    if (!readDecimal(fields.front())) {
        return takeHeader() && toLine();
    }
    firstWidth = counted(fields.size());
    // Where there are times each line may have an accuracy too, or have none.
    width = fields.size() > timeColumn ? columnCount : fields.size();
    return (fields.size() > longitudeColumn && fields.size() <= columnCount) ||
           fail(input, line, "the line has " + firstWidth + ", and no line before it says what they are");
}

bool CSVPoints::takeHeader() {
    static constexpr std::array<std::pair<std::string_view, Column>, 14> names{{
        {"lat", latitudeColumn},
        {"latitude", latitudeColumn},
        {"lon", longitudeColumn},
        {"lng", longitudeColumn},
        {"long", longitudeColumn},
        {"longitude", longitudeColumn},
        {"time", timeColumn},
        {"timestamp", timeColumn},
        {"date", timeColumn},
        {"datetime", timeColumn},
        {"accuracy", accuracyColumn},
        {"horizontalaccuracy", accuracyColumn},
        {"horizontal_accuracy", accuracyColumn},
        {"acc", accuracyColumn},
    }};
    columns = {};
    width = fields.size();
    firstWidth = counted(width);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string name = lowered(fields[i]);
        const auto match = std::find_if(names.begin(), names.end(), [&](const auto& one) { return one.first == name; });
        if (match != names.end() && !columns[match->second]) {
            columns[match->second] = i;
        }
    }
    return (columns[latitudeColumn] && columns[longitudeColumn]) ||
           fail(input, line, "the first line begins with no number and names no columns \"lat\" and \"lon\"");
}

std::string_view CSVPoints::field(Column column) const {
    const std::optional<std::size_t> index = columns[column];
    return index && *index < fields.size() ? fields[*index] : std::string_view();
}

} // namespace quorvane::testing
