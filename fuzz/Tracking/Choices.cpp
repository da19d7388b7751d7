#include "fuzz/Tracking/Choices.h"

#include <chrono>
#include <cstdint>
#include <limits>
#include <string>

namespace quorvane::fuzz {
namespace {

using namespace std::chrono_literals;
using testing::ScriptedAnswer;

constexpr double latitude = 46.0;
constexpr double longitude = 14.5;
constexpr double tenMetres = 0.00009;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr std::int64_t mostSeconds = (std::numeric_limits<std::int64_t>::max)();

/// Mostly a small number of steps from @p home.
double chooseDegrees(Bytes& bytes, double home) {
    constexpr double specials[] = {0, -0.0, 90, -90, 180, -180, 200, infinity, -infinity, notANumber, 1e300, -1e-9};
    const std::uint8_t choice = bytes.next();
    if (choice >= 256 - std::size(specials)) {
        return specials[choice - (256 - std::size(specials))];
    }
    constexpr double steps[] = {0, 1, 3, 6.99, 7, 7.01, 29, 31, 60, 600, 60'000};
    return home + tenMetres * steps[choice % std::size(steps)];
}

std::int64_t chooseSeconds(Bytes& bytes) {
    constexpr std::int64_t choices[] = {0, 30, 1, 20, 140, 150, 600, -1, mostSeconds, -mostSeconds};
    return bytes.oneOf(choices);
}

std::int64_t chooseMetres(Bytes& bytes) {
    constexpr std::int64_t choices[] = {0, 70, 1, 100, 200, -1, mostSeconds};
    return bytes.oneOf(choices);
}

template <class Enumeration>
std::optional<Enumeration> chooseCase(Bytes& bytes, std::size_t count) {
    const std::size_t choice = bytes.below(count + 1);
    return choice == count ? std::nullopt : std::optional(static_cast<Enumeration>(choice));
}

std::optional<platform::Date> chooseOptionalDate(Bytes& bytes, platform::Date now) {
    return bytes.below(4) == 1 ? std::optional(chooseDate(bytes, now)) : std::nullopt;
}

} // namespace

platform::Date chooseDate(Bytes& bytes, platform::Date now) {
    constexpr std::chrono::nanoseconds differences[] = {0s, -1s, 1s,  -30s, 30s,  150s,           -150s,
                                                        1h, -1h, 24h, 1ns,  -1ns, 24h * 365 * 10, -24h * 365 * 10};
    constexpr std::size_t ends = 2;
    const std::size_t choice = bytes.below(std::size(differences) + ends);
    if (choice < std::size(differences)) {
        return now + differences[choice];
    }
    return choice == std::size(differences) ? (platform::Date::min)() : (platform::Date::max)();
}

platform::Location chooseFix(Bytes& bytes, platform::Date now) {
    constexpr double accuracies[] = {10, 5, 999.9, 1000, 1500, 0, -1, infinity, notANumber, 1e300};
    platform::Location fix;
    fix.coordinate = {chooseDegrees(bytes, latitude), chooseDegrees(bytes, longitude)};
    fix.horizontalAccuracy = bytes.oneOf(accuracies);
    fix.timestamp = chooseDate(bytes, now);
    return fix;
}

QVLocationSource chooseSource(Bytes& bytes) {
    // One more than there are cases.
    return static_cast<QVLocationSource>(bytes.below(static_cast<std::size_t>(QVLocationSource::UNKNOWN) + 2));
}

QVDesiredAccuracy chooseAccuracy(Bytes& bytes) {
    return static_cast<QVDesiredAccuracy>(bytes.below(4));
}

QuorvaneTrackingOptions chooseOptions(Bytes& bytes, platform::Date now) {
    QuorvaneTrackingOptions options;
    options.desiredAccuracy = chooseCase<QVDesiredAccuracy>(bytes, 4);
    options.desiredMovingUpdateInterval = chooseSeconds(bytes);
    options.desiredStoppedUpdateInterval = chooseSeconds(bytes);
    options.desiredSyncInterval = chooseSeconds(bytes);
    options.movingGeofenceRadius = chooseMetres(bytes);
    options.replay = chooseCase<QVReplay>(bytes, 2);
    options.stopDistance = chooseMetres(bytes);
    options.stopDuration = chooseSeconds(bytes);
    options.stoppedGeofenceRadius = chooseMetres(bytes);
    options.sync = chooseCase<QVSync>(bytes, 3);
    const std::uint8_t switches = bytes.next();
    options.showBlueBar = (switches & 1U) != 0;
    options.useMovingGeofence = (switches & 2U) != 0;
    options.useSignificantLocationChanges = (switches & 4U) != 0;
    options.useStoppedGeofence = (switches & 8U) != 0;
    options.useVisits = (switches & 16U) != 0;
    options.startTrackingAfter = chooseOptionalDate(bytes, now);
    options.stopTrackingAfter = chooseOptionalDate(bytes, now);
    return options;
}

ScriptedAnswer chooseAnswer(Bytes& bytes) {
    static const std::string home = R"({"id":"home","name":"Home","latitude":46.0,"longitude":14.5})";
    static const std::string shop = R"({"id":"shop","name":"Shop","latitude":46.001,"longitude":14.5})";
    static const std::string far = R"({"id":"far","name":"Far","latitude":46.03,"longitude":14.5})";
    static const ScriptedAnswer answers[] = {
        ScriptedAnswer::json(R"({"count":0,"data":[]})"),
        ScriptedAnswer::json(R"({"count":1,"data":[)" + home + "]}"),
        ScriptedAnswer::json(R"({"count":2,"data":[)" + shop + "," + home + "]}"),
        ScriptedAnswer::json(R"({"count":2,"data":[)" + home + "," + far + "]}"),
        ScriptedAnswer::json(R"({"count":1,"data":[{"id":"nowhere"}]})"),
        ScriptedAnswer::json("{}"),
        ScriptedAnswer::json("<html>"),
        ScriptedAnswer::with(204),
        ScriptedAnswer::with(400),
        ScriptedAnswer::with(401),
        ScriptedAnswer::with(500),
        ScriptedAnswer::failure(platform::TransportError::Kind::connection),
        ScriptedAnswer::never(),
    };
    constexpr std::chrono::nanoseconds delays[] = {0s, 100ms, 3s, 9s, 10s, 20s};
    const ScriptedAnswer& answer = bytes.oneOf(answers);
    return answer.after(bytes.oneOf(delays));
}

} // namespace quorvane::fuzz
