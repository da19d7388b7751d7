#include "days/DayScript.h"

#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "testing/DateText.h"

namespace quorvane::days {
namespace {

/// Takes the words of one line from its front.
class Words {
public:
    Words(const std::string& line, std::string thePosition) : stream(line), position(std::move(thePosition)) {}

    std::string word() {
        std::string result;
        if (!(stream >> result)) {
            fail("a word is missing");
        }
        return result;
    }
    std::string rest() {
        std::string result;
        std::getline(stream >> std::ws, result);
        if (result.empty()) {
            fail("a word is missing");
        }
        return result;
    }
    platform::Date moment() {
        const std::string text = word();
        const auto date = quorvane::testing::readDate(text);
        if (!date) {
            fail(text + " is no time");
        }
        return *date;
    }
    platform::Coordinate coordinate() {
        const std::string text = word();
        platform::Coordinate result;
        char comma = 0;
        std::istringstream numbers(text);
        if (!(numbers >> result.latitude >> comma >> result.longitude) || comma != ',') {
            fail(text + " is no coordinate");
        }
        return result;
    }
    [[noreturn]] void fail(const std::string& problem) const { throw std::runtime_error(position + ": " + problem); }

private:
    std::istringstream stream;
    const std::string position;
};

void read(DayScript& day, Words& words) {
    const std::string subject = words.word();
    if (subject == "track") {
        day.track = words.word();
    } else if (subject == "options") {
        day.options = words.rest();
    } else if (subject == "place") {
        KnownPlace place{words.word(), "", words.coordinate()};
        place.name = words.rest();
        day.places.push_back(place);
    } else if (subject == "token") {
        day.firstTokenSeconds = std::stoll(words.word());
    } else if (subject == "at") {
        const platform::Date at = words.moment();
        const std::string what = words.word();
        day.happenings.push_back({at, what, words.rest()});
    } else if (subject == "until") {
        day.until = words.moment();
    } else {
        words.fail("nothing begins with " + subject);
    }
}

} // namespace

DayScript readDay(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error(path + " cannot be read");
    }
    DayScript day;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (!line.empty() && line.front() != '#') {
            Words words(line, path + ", line " + std::to_string(number));
            read(day, words);
        }
    }
    return day;
}

} // namespace quorvane::days
