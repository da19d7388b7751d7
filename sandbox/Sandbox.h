#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "Platform/Location.h"
#include "sandbox/Fault.h"
#include "sandbox/RequestRecord.h"

namespace quorvane::sandbox {

/// How a sandbox is set up. Every default serves a test.
struct SandboxOptions {
    /// 0: any free port.
    int dataPort = 0;
    int identityPort = 0;
    /// A file that keeps places, tasks, claims, answers, photos and tokens; empty: in memory. Where it holds other
    /// places and tasks than these options make, those are replaced, and claims, answers, photos and where users
    /// searched last thrown away with them.
    std::string database;
    /// The same seed around the same points makes the same places and tasks.
    std::uint64_t seed = 1;
    /// Where places are made: one point, or the points of a track. Empty: around `defaultCenter`.
    std::vector<platform::Coordinate> around;
    static constexpr platform::Coordinate defaultCenter{.latitude = 46.05, .longitude = 14.5};

    /// Tasks beside those, each as a JSON object with a "key" of its own. Its "state" may be "cancelled"; one whose
    /// location has no valid coordinate is found around latitude 0, longitude 0.
    std::vector<std::string> tasks;

    std::chrono::seconds accessTokenLifetime{3600};
    std::chrono::seconds refreshTokenLifetime{std::chrono::hours(24 * 30)};
    std::chrono::seconds codeLifetime{60};
    /// How long a refresh token that was used goes on working.
    std::chrono::seconds refreshGrace{30};
    /// The time that lifetimes are measured by. Called on any thread.
    std::function<std::chrono::system_clock::time_point()> now = [] { return std::chrono::system_clock::now(); };

    std::vector<Fault> faults;
    /// Told of each request, one at a time, on any thread, before its answer goes out.
    std::function<void(const RequestRecord&)> onRequest;
    /// Told, in one sentence and before `start` returns, when claims of other tasks are thrown away.
    std::function<void(const std::string&)> onNotice;
};

/// The data service and the identity service on the loopback interface of this machine, until it is destroyed.
/// Every operation is safe from any thread.
class Sandbox {
public:
    /// Both services, ready to answer; or one sentence, when a port or the database cannot be had.
    static std::variant<std::unique_ptr<Sandbox>, std::string> start(SandboxOptions options = {});
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    /// Ends every connection; returns when no thread and no port is left.
    ~Sandbox();

    [[nodiscard]] int dataPort() const;
    [[nodiscard]] int identityPort() const;

    /// Faults happen in the order in which they were added, each until it is used up.
    void addFault(Fault fault);
    void clearFaults();

    /// What arrived, oldest first; the last 10,000.
    [[nodiscard]] std::vector<RequestRecord> requests() const;
    void clearRequests();

    /// Every access token stops working now; refresh tokens go on.
    void expireTokens();

private:
    struct Parts;
    explicit Sandbox(std::unique_ptr<Parts> theParts);
    std::unique_ptr<Parts> parts;
};

} // namespace quorvane::sandbox
