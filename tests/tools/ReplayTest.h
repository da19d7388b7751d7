#pragma once

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tools/ProgramTest.h"

namespace quorvane::tool {

/// Runs `quorvane replay` on the invented ride and on other files.
class ReplayTest : public ProgramTest {
protected:
    Ended replay(const std::string& track, Arguments more = {}) {
        more.insert(more.begin(), {"replay", track});
        return runPlain(more);
    }

    Ended replayRide(const Arguments& more = {}) { return replay(ride, more); }

    /// The numbers of the only replay that was carried out.
    AnyCodable::Dictionary summaryOf(const std::string& track, Arguments more = {}) {
        more.emplace_back("--json");
        const Ended ended = replay(track, more);
        EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
        const AnyCodable::List replays = listIn(ended.document(), "replays");
        EXPECT_EQ(replays.size(), 1U);
        return replays.empty() ? AnyCodable::Dictionary() : objectIn(replays.front());
    }

    [[nodiscard]] std::string contentOf(const std::string& name) const {
        std::ifstream file(scratch / name, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

    [[nodiscard]] std::string places() const {
        return makeFile("places.json", R"({"status": "SUCCESS", "places": [
            {"distance": 1.5, "place": {"id": "p1", "name": "Market", "latitude": 52.1030, "longitude": 5.6828}},
            {"distance": 2.5, "place": {"id": "p2", "name": "Windmill", "latitude": 52.0947, "longitude": 5.6722}},
            {"distance": 3.5, "place": {"id": "p3", "name": "Far away", "latitude": 40, "longitude": 5}}]})");
    }

    const std::string ride = QUORVANE_RIDE;
};

inline std::size_t linesWith(const std::string& text, const std::string& part) {
    const std::vector<std::string> lines = linesOf(text);
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [&part](const std::string& line) { return line.find(part) != std::string::npos; }));
}

/// A line of the summary as words: "dropped: old 0".
inline bool hasRow(const std::string& text, const std::string& words) {
    const std::vector<std::string> lines = linesOf(text);
    return std::any_of(lines.begin(), lines.end(), [&words](const std::string& line) {
        std::istringstream parts(line);
        std::string joined;
        for (std::string part; parts >> part;) {
            joined += (joined.empty() ? "" : " ") + part;
        }
        return joined == words;
    });
}

} // namespace quorvane::tool
