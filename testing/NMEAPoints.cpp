#include "testing/NMEAPoints.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include "testing/SimulatedClock.h"
#include "testing/TrackReader.h"
#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono;

/// The number of the two digits at @p index, which are there.
int pair(std::string_view text, std::size_t index) {
    return (text[index] - '0') * 10 + (text[index + 1] - '0');
}

bool isDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isDigit);
}

/// Whether @p sentence, from behind its "$" on, ends with the exclusive or of all its bytes.
bool isRight(std::string_view sentence) {
    const std::size_t star = sentence.rfind('*');
    if (star == std::string_view::npos || sentence.size() != star + 3) {
        return false;
    }
    unsigned told = 0;
    const char* const last = sentence.data() + sentence.size();
    if (std::from_chars(last - 2, last, told, 16).ptr != last) {
        return false;
    }
    unsigned sum = 0;
    for (const char c : sentence.substr(0, star)) {
        sum ^= static_cast<unsigned char>(c);
    }
    return sum == told;
}

} // namespace

NMEAPoints::NMEAPoints(const TrackOrigin& origin, const std::optional<Moment>& first)
    : input(origin), last(first.value_or(Moment{floor<days>(SimulatedClock::start), {}})), isDated(!first) {}

std::optional<NMEAPoints::Moment> NMEAPoints::firstDate(const TrackOrigin& origin) {
    NMEAPoints all(origin, std::nullopt);
    while (all.toSentence()) {
        Epoch epoch;
        if (all.isSentence("RMC") && !all.field(1).empty() && all.timeOfDay(all.field(1), epoch.time) &&
            all.date(all.field(9), epoch.day) && epoch.day) {
            return Moment{*epoch.day, epoch.time};
        }
    }
    return std::nullopt;
}

bool NMEAPoints::next(TrackPoint& point) {
    while (toSentence()) {
        if ((!isSentence("RMC") && !isSentence("GGA")) || field(1).empty()) {
            continue;
        }
        Epoch epoch;
        if (!timeOfDay(field(1), epoch.time)) {
            return false;
        }
        if (pending && pending->time == epoch.time) {
            if (!add(*pending)) {
                return false;
            }
            continue;
        }
        if (!add(epoch)) {
            return false;
        }
        std::optional<Epoch> complete = std::exchange(pending, epoch);
        if (complete && finish(*complete)) {
            point = complete->point;
            return true;
        }
    }
    if (!error().empty() || !pending || !finish(*pending)) {
        return false;
    }
    point = pending->point;
    pending.reset();
    return true;
}

std::string NMEAPoints::missing() const {
    std::string result = "has no sentence RMC or GGA that tells a position";
    if (wrongSentences > 0) {
        result += "; " + std::to_string(wrongSentences) + (wrongSentences == 1 ? " sentence has" : " sentences have") +
                  " no checksum or a wrong one";
    }
    return result;
}

bool NMEAPoints::toSentence() {
    while (true) {
        line = input.lineNumber();
        const std::optional<std::string_view> next = input.line();
        if (!next) {
            return !input.problem().empty() && fail(input, input.problem());
        }
        const std::string_view text = trimmed(*next);
        const std::size_t begin = text.find('$');
        if (begin == std::string_view::npos) {
            continue;
        }
        const std::string_view sentence = text.substr(begin + 1);
        if (isRight(sentence)) {
            split(sentence.substr(0, sentence.size() - 3));
            return true;
        }
        ++wrongSentences;
    }
}

void NMEAPoints::split(std::string_view text) {
    fieldCount = 0;
    while (fieldCount < fields.size()) {
        const std::size_t comma = text.find(',');
        fields[fieldCount++] = trimmed(text.substr(0, comma));
        if (comma == std::string_view::npos) {
            return;
        }
        text.remove_prefix(comma + 1);
    }
}

std::string_view NMEAPoints::field(std::size_t index) const {
    return index < fieldCount ? fields[index] : std::string_view();
}

/// Whatever the talker: "GP", "GN" and others.
bool NMEAPoints::isSentence(std::string_view kind) const {
    return fields[0].size() == 2 + kind.size() && fields[0].ends_with(kind);
}

bool NMEAPoints::timeOfDay(std::string_view text, TimeOfDay& time) {
    constexpr std::size_t whole = 6;
    const std::string_view fraction = text.size() > whole ? text.substr(whole + 1) : "";
    if (text.size() < whole || !isDigits(text.substr(0, whole)) || !isDigits(fraction) ||
        (text.size() > whole && text[whole] != '.') || pair(text, 0) > 23 || pair(text, 2) > 59 || pair(text, 4) > 60) {
        return fail(input, line, "the time " + quoted(text) + " is no time of day");
    }
    nanoseconds unit = seconds(1);
    time = hours(pair(text, 0)) + minutes(pair(text, 2)) + seconds(pair(text, 4));
    for (const char digit : fraction) {
        unit /= 10;
        time += unit * (digit - '0');
    }
    return true;
}

bool NMEAPoints::date(std::string_view text, std::optional<Day>& day) {
    if (text.empty()) {
        return true;
    }
    constexpr int firstYear = 80;
    const bool isWhole = text.size() == 6 && isDigits(text);
    const int year = isWhole ? pair(text, 4) : 0;
    const year_month_day told(std::chrono::year(year >= firstYear ? 1900 + year : 2000 + year),
                              month(isWhole ? static_cast<unsigned>(pair(text, 2)) : 0),
                              std::chrono::day(isWhole ? static_cast<unsigned>(pair(text, 0)) : 0));
    if (!told.ok()) {
        return fail(input, line, "the date " + quoted(text) + " is none");
    }
    day = told;
    return true;
}

bool NMEAPoints::degrees(std::string_view what, std::size_t index, std::string_view positive, std::string_view negative,
                         int bound, double& value) {
    const std::string_view text = field(index);
    const std::string_view side = field(index + 1);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::size_t digits = point < 2 ? 0 : point - 2;
    const std::optional<double> whole =
        digits > 0 && isDigits(text.substr(0, digits)) ? readDecimal(text.substr(0, digits)) : std::nullopt;
    const std::optional<double> parts =
        digits > 0 && isDigit(text[digits]) ? readDecimal(text.substr(digits)) : std::nullopt;
    const double angle = whole && parts ? *whole + *parts / 60 : bound + 1;
    if (angle > bound || *parts >= 60 || (side != positive && side != negative)) {
        return fail(input, line,
                    "the " + std::string(what) + ' ' + quoted(std::string(text) + ',' + std::string(side)) +
                        " is no degrees and minutes up to " + std::to_string(bound));
    }
    value = side == positive ? angle : -angle;
    return true;
}

bool NMEAPoints::position(std::size_t index, TrackPoint& point) {
    return degrees("latitude", index, "N", "S", 90, point.fix.coordinate.latitude) &&
           degrees("longitude", index + 2, "E", "W", 180, point.fix.coordinate.longitude);
}

bool NMEAPoints::add(Epoch& epoch) {
    const bool isGGA = isSentence("GGA");
    const bool isValid = isGGA ? !field(6).empty() && field(6) != "0" : field(2) == "A";
    if (!isGGA && !date(field(9), epoch.day)) {
        return false;
    }
    epoch.isVoid = epoch.isVoid || !isValid;
    if (!isValid) {
        return true;
    }
    if (!epoch.hasFix) {
        epoch.point.line = line;
        epoch.point.fix.horizontalAccuracy = defaultAccuracy;
        epoch.hasFix = true;
        if (!position(isGGA ? 2 : 3, epoch.point)) {
            return false;
        }
    }
    return !isGGA || dilution(input, line, field(8), epoch.point);
}

bool NMEAPoints::finish(Epoch& epoch) {
    constexpr hours half(12);
    if (epoch.day) {
        isDated = true;
    } else {
        const TimeOfDay since = epoch.time - last.time;
        epoch.day = last.day + days(since < -half ? 1 : 0) - days(!isDated && since > half ? 1 : 0);
    }
    last = {*epoch.day, epoch.time};
    epoch.point.fix.timestamp = *epoch.day + epoch.time;
    epoch.point.isTimed = true;
    return epoch.hasFix && !epoch.isVoid;
}

} // namespace quorvane::testing
