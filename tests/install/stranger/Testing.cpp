// A host's own test: a search on the simulated platform, against scripted answers.
#include <chrono>
#include <iostream>

#include <Facade/Quorvane.h>
#include <testing/InstalledPlatform.h>

using quorvane::Quorvane;
using quorvane::testing::ScriptedAnswer;

int main() {
    const quorvane::testing::InstalledPlatform world;
    auto& transport = world->transport();
    transport.answer("GET", "/authorize", [](const quorvane::testing::RecordedRequest& request) {
        return ScriptedAnswer::json(R"({"code":"c1","state":")" + request.query.at("state") + R"("})");
    });
    transport.answer("POST", "/token",
                     ScriptedAnswer::json(R"({"access_token":"a1","expires_in":"3600",)"
                                          R"("id_token":"i1","refresh_token":"r1",)"
                                          R"("session_state":"s1","token_type":"Bearer"})"));
    transport.answer("GET", "/locations/find", ScriptedAnswer::json(R"({"count":1,"data":[{"id":"p1"}]})"));

    Quorvane::initialize("UVZGQUtF-stranger");
    std::string found;
    Quorvane::Search::places({{45.75, 14.36}, 5.0, -1.0, {}}, 1000, {}, {}, {}, 10,
                             [&found](quorvane::QVStatus status, const auto&, const auto& places) {
                                 found = status == quorvane::QVStatus::SUCCESS && places ? places->at(0)->_id : "";
                             });
    world->advance(std::chrono::seconds(1));

    std::cout << "found \"" << found << "\" with " << transport.requests().size() << " requests\n";
    return found == "p1" && Quorvane::isAuthenticated() ? 0 : 1;
}
