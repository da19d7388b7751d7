#include "tools/replay/ReplayPage.h"

#include <algorithm>
#include <chrono>
#include <variant>

#include "Models/Base64.h"
#include "testing/DateText.h"
#include "testing/DecisionNames.h"
#include "testing/SimulatedDigest.h"
#include "tools/replay/ReplayMap.h"
#include "tools/replay/ReplayPageText.h"

namespace quorvane::tool {
namespace {

using testing::nameOf;

/// What a policy for the content of a page calls a text that it lets in.
std::string sourceOf(std::string_view text) {
    const auto digest = testing::SimulatedDigest().sha256(text);
    return "'sha256-" + base64(std::string(digest.begin(), digest.end())) + '\'';
}

/// What is said about a mark when it is pointed at.
std::string titleOf(platform::Date time, const std::string& words) {
    return escaped(testing::dateText(time) + ' ' + words);
}

std::string head(const std::string& title) {
    return "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src " +
           sourceOf(replayStyle) + "; script-src " + sourceOf(replayScript) +
           "; base-uri 'none'; form-action 'none'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           escaped(title) + "</title>\n<style>" + replayStyle + "</style>\n</head>\n";
}

std::string legend() {
    std::string list = "<ul class=\"legend\">";
    for (const auto& [kind, words] :
         {std::pair("mark sent", "fix, sent"), std::pair("mark kept", "fix, not sent"),
          std::pair("mark dropped", "fix, dropped"), std::pair("mark stop", "stop"), std::pair("mark event", "event"),
          std::pair("mark fence", "geofence"), std::pair("mark place", "place")}) {
        list += std::string("<li><svg viewBox=\"-10 -10 20 20\" aria-hidden=\"true\"><circle class=\"") + kind +
                "\" r=\"5\"/></svg>" + words + "</li>";
    }
    return list + "</ul>\n";
}

std::string table(const std::vector<ReplaySummary>& summaries) {
    std::string rows = "<div class=\"table\"><table>\n<thead><tr><th></th>";
    for (const ReplaySummary& summary : summaries) {
        rows += "<th>" + escaped(summary.options) + "</th>";
    }
    rows += "</tr></thead>\n<tbody>\n";
    for (const SummaryRow& row : summaryRows(summaries)) {
        rows += "<tr><th>" + escaped(row.label) + "</th>";
        for (const std::string& value : row.values) {
            rows += "<td>" + escaped(value) + "</td>";
        }
        rows += "</tr>\n";
    }
    return rows + "</tbody></table></div>\n";
}

} // namespace

std::string ReplayPage::offset(platform::Date moment) const {
    return tenths(std::chrono::duration<double>(moment - way.front().timestamp).count());
}

std::string ReplayPage::attributes(std::string_view kind, platform::Date time) const {
    return "class=\"" + std::string(kind) + "\" data-t=\"" + offset(time) + '"';
}

std::vector<platform::Coordinate> ReplayPage::points() const {
    std::vector<platform::Coordinate> all;
    all.reserve(way.size());
    for (const platform::Location& fix : way) {
        all.push_back(fix.coordinate);
    }
    return all;
}

void ReplayPage::recorded(const platform::Location& fix) {
    if (way.empty() || fix.timestamp > way.back().timestamp) {
        way.push_back(fix);
    }
}

void ReplayPage::observed(platform::Date now, const observed::Observation& observation) {
    last = now;
    if (const auto* const fix = std::get_if<observed::Fix>(&observation)) {
        observe(last, *fix);
    } else if (const auto* const fence = std::get_if<observed::Geofence>(&observation)) {
        observe(last, *fence);
    } else if (const auto* const sync = std::get_if<observed::Sync>(&observation)) {
        observe(last, *sync);
    }
}

void ReplayPage::observe(platform::Date time, const observed::Fix& fix) {
    const platform::Coordinate place = fix.location.coordinate;
    if (fix.outcome != observed::Fix::Outcome::processed) {
        if (place.isValid()) {
            fixes.push_back({time, place, "mark dropped", "dropped: " + std::string(nameOf(fix.outcome))});
        }
        return;
    }
    const bool isSent = fix.sync && fix.sync->rule == SyncDecision::Rule::send;
    const std::string why = fix.sync ? std::string(nameOf(fix.sync->rule)) : "";
    fixes.push_back({time, place, isSent ? "mark sent" : "mark kept", isSent ? "sent" : "not sent: " + why});
    if (fix.stoppedAfter && !fix.stoppedBefore) {
        stops.push_back({time, place, "mark stop", "stop"});
    }
}

void ReplayPage::observe(platform::Date time, const observed::Geofence& fence) {
    if (fence.isPlaced) {
        fences.push_back({time, std::nullopt, fence.region});
        return;
    }
    // The one that is placed is among the last of them.
    const auto placed = std::find_if(fences.rbegin(), fences.rend(), [&fence](const Fence& one) {
        return !one.removed && one.region.identifier == fence.region.identifier;
    });
    if (placed != fences.rend()) {
        placed->removed = time;
    }
}

void ReplayPage::observe(platform::Date time, const observed::Sync& sync) {
    std::string names;
    for (const auto& event : sync.events) {
        names += (names.empty() ? "" : ", ") + std::string(nameOf(event->type));
    }
    if (!names.empty()) {
        events.push_back({time, sync.location.coordinate, "mark event",
                          names + (sync.place ? ", at " + sync.place->name : std::string())});
    }
}

platform::Date ReplayPage::end() const {
    return std::max(last, way.back().timestamp);
}

std::string ReplayPage::map(const KnownPlaces& places) const {
    ReplayMap map(points());
    map.line(points(), "class=\"way\"");
    for (const Fence& fence : fences) {
        map.circle(
            fence.region.center, fence.region.radius,
            attributes("fence", fence.placed) + (fence.removed ? " data-e=\"" + offset(*fence.removed) + '"' : ""),
            titleOf(fence.placed, "geofence"));
    }
    for (const auto* const marks : {&fixes, &stops, &events}) {
        for (const Mark& mark : *marks) {
            map.mark(mark.place, attributes(mark.kind, mark.time), titleOf(mark.time, mark.words));
        }
    }
    for (const KnownPlace& place : places) {
        if (map.holds(place.coordinate)) {
            map.mark(place.coordinate, "class=\"mark place\"", escaped(place.name));
            map.label(place.coordinate, escaped(place.name));
        }
    }
    return map.svg();
}

std::string ReplayPage::happenings() const {
    std::vector<Mark> all = stops;
    all.insert(all.end(), events.begin(), events.end());
    std::stable_sort(all.begin(), all.end(), [](const Mark& a, const Mark& b) { return a.time < b.time; });
    if (all.empty()) {
        return "<p>Neither a stop nor an event.</p>\n";
    }
    std::string list = "<ol>\n";
    for (const Mark& mark : all) {
        list += "<li><button type=\"button\" data-go=\"" + offset(mark.time) + "\"><span>" +
                testing::dateText(mark.time) + "</span>" + escaped(mark.words) + "</button></li>\n";
    }
    return list + "</ol>\n";
}

std::string ReplayPage::data() const {
    const ReplayMap map(points());
    const auto start =
        std::chrono::duration_cast<std::chrono::milliseconds>(way.front().timestamp.time_since_epoch()).count();
    std::string text = "{\"start\":" + std::to_string(start) + ",\"way\":[";
    for (const platform::Location& fix : way) {
        const ReplayMap::Point point = map.at(fix.coordinate);
        text += (&fix == &way.front() ? "[" : ",[") + offset(fix.timestamp) + ',' + tenths(point.x) + ',' +
                tenths(point.y) + ']';
    }
    return text + "]}";
}

std::string ReplayPage::html(const std::vector<ReplaySummary>& summaries, const KnownPlaces& places) const {
    const std::string until = offset(end());
    return head(title) + "<body>\n<main>\n<h1>" + escaped(title) + "</h1>\n<section>\n" + map(places) +
           "<div class=\"time\"><input id=\"range\" type=\"range\" min=\"0\" step=\"0.1\" max=\"" + until +
           "\" value=\"" + until + "\" aria-label=\"Time\"><output id=\"moment\" for=\"range\"></output></div>\n" +
           legend() + "</section>\n<section>\n<h2>What happened</h2>\n" + happenings() +
           "</section>\n<section class=\"summary\">\n<h2>Summary</h2>\n" + table(summaries) + "</section>\n</main>\n" +
           "<script id=\"data\" type=\"application/json\">" + data() + "</script>\n<script>" + replayScript +
           "</script>\n</body>\n</html>\n";
}

} // namespace quorvane::tool
