#include "sandbox/Sandbox.h"

#include <utility>

#include "sandbox/DataService.h"
#include "sandbox/Database.h"
#include "sandbox/HTTPService.h"
#include "sandbox/IdentityService.h"
#include "sandbox/OwnTasks.h"
#include "sandbox/PageService.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/RequestLog.h"
#include "sandbox/Secrets.h"
#include "sandbox/Seed.h"
#include "sandbox/TaskService.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

struct Sandbox::Parts {
    Parts(SandboxOptions& options, std::unique_ptr<Database> theDatabase)
        : log(std::move(options.onRequest)),
          database(std::move(theDatabase)),
          places(*database),
          tokens(*database,
                 {.code = options.codeLifetime,
                  .accessToken = options.accessTokenLifetime,
                  .refreshToken = options.refreshTokenLifetime,
                  .refreshGrace = options.refreshGrace},
                 options.now),
          identity(tokens, options.now),
          data(*database, places, tokens),
          tasks(*database, places, tokens, options.now),
          page(*database, places, log, *faults) {
        for (Fault& fault : options.faults) {
            faults->add(std::move(fault));
        }
    }

    HTTPService::Setup service(const char* name, int port, std::vector<Route> routes) {
        return {.name = name,
                .port = port,
                .routes = std::move(routes),
                .faults = faults,
                .record = [this](const RequestRecord& record) { log.add(record); }};
    }

    HTTPService::Setup dataOptions(int port) {
        std::vector<Route> routes{
            {"GET", "/config", [this](const Request& request) { return data.configuration(request); }},
            {"GET", "/locations/find", [this](const Request& request) { return data.places(request); }},
            {"GET", "/generate/tasks", [this](const Request& request) { return data.tasks(request); }},
            {"POST", "/tasks", [this](const Request& request) { return tasks.claim(request); }},
            {"POST", "/tasks/*/responses", [this](const Request& request) { return tasks.respond(request); },
             TaskService::longestResponse},
            {"GET", "/photos/*", [this](const Request& request) { return tasks.photo(request.wildcards.front()); }}};
        const auto add = [&](const char* method, const char* path, Answer (PageService::*handle)(const Request&)) {
            routes.push_back({.method = method,
                              .path = path,
                              .handle = [this, handle](const Request& request) { return (page.*handle)(request); },
                              .isPage = true});
        };
        add("GET", "/", &PageService::document);
        add("GET", "/sandbox/page/*", &PageService::file);
        add("GET", "/sandbox/map", &PageService::map);
        add("GET", "/sandbox/activity", &PageService::activity);
        add("GET", "/sandbox/requests/*", &PageService::request);
        add("GET", "/sandbox/photos/*", &PageService::photo);
        add("POST", "/sandbox/faults", &PageService::addFault);
        add("DELETE", "/sandbox/faults/*", &PageService::removeFault);
        return service("data", port, std::move(routes));
    }

    HTTPService::Setup identityOptions(int port) {
        return service("identity", port,
                       {{"GET", "/authorize", [this](const Request& request) { return identity.authorize(request); }},
                        {"POST", "/token", [this](const Request& request) { return identity.token(request); }}});
    }

    std::shared_ptr<FaultList> faults = std::make_shared<FaultList>();
    RequestLog log;
    std::unique_ptr<Database> database;
    PlaceStore places;
    TokenStore tokens;
    IdentityService identity;
    DataService data;
    TaskService tasks;
    PageService page;
    // Last, so that they end before what they use.
    std::unique_ptr<HTTPService> dataServer;
    std::unique_ptr<HTTPService> identityServer;
};

namespace {

/// Takes the service out of @p started; otherwise the sentence.
template <class Service>
std::string take(std::variant<std::unique_ptr<Service>, std::string> started, std::unique_ptr<Service>& service) {
    if (auto* sentence = std::get_if<std::string>(&started)) {
        return *sentence;
    }
    service = std::move(std::get<0>(started));
    return {};
}

std::string counted(std::int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

void seed(PlaceStore& store, const SandboxOptions& options) {
    const auto& points = options.around;
    std::string name = seedName(options.seed, points);
    for (const std::string& task : options.tasks) {
        name += " " + challengeFor(task);
    }
    if (store.origin() != name) {
        const PlaceStore::Traces traces = store.traces();
        if (options.onNotice && traces.claims > 0) {
            options.onNotice("Other places and tasks are made than the database holds: " +
                             counted(traces.claims, "claim") + ", " + counted(traces.responses, "answer") + " and " +
                             counted(traces.photos, "photo") + " are thrown away with those.");
        }
        SeedData data = makeSeedData(options.seed, points);
        addOwnTasks(data.tasks, options.tasks);
        store.replace(data.places, data.tasks, name);
    }
}

} // namespace

std::variant<std::unique_ptr<Sandbox>, std::string> Sandbox::start(SandboxOptions options) {
    if (options.around.empty()) {
        options.around = {SandboxOptions::defaultCenter};
    }
    std::unique_ptr<Database> database;
    if (std::string problem = take(Database::open(options.database), database); !problem.empty()) {
        return problem;
    }
    try {
        auto parts = std::make_unique<Parts>(options, std::move(database));
        std::string problem = take(HTTPService::open(parts->dataOptions(options.dataPort)), parts->dataServer);
        if (problem.empty()) {
            problem = take(HTTPService::open(parts->identityOptions(options.identityPort)), parts->identityServer);
        }
        if (!problem.empty()) {
            return problem;
        }
        // A start that fails throws nothing away.
        seed(parts->places, options);
        parts->dataServer->serve();
        parts->identityServer->serve();
        return std::unique_ptr<Sandbox>(new Sandbox(std::move(parts)));
    } catch (const std::exception& error) {
        return "The sandbox cannot start: " + std::string(error.what()) + ".";
    }
}

Sandbox::Sandbox(std::unique_ptr<Parts> theParts) : parts(std::move(theParts)) {}

Sandbox::~Sandbox() = default;

int Sandbox::dataPort() const {
    return parts->dataServer->port();
}

int Sandbox::identityPort() const {
    return parts->identityServer->port();
}

void Sandbox::addFault(Fault fault) {
    parts->faults->add(std::move(fault));
}

void Sandbox::clearFaults() {
    parts->faults->clear();
}

std::vector<RequestRecord> Sandbox::requests() const {
    return parts->log.records();
}

void Sandbox::clearRequests() {
    parts->log.clear();
}

void Sandbox::expireTokens() {
    parts->tokens.expireAll();
}

} // namespace quorvane::sandbox
