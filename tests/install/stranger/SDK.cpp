// Uses the library without any platform: models, their JSON, statuses.
#include <iostream>

#include <Facade/Quorvane.h>
#include <JSON/JSON.h>
#include <Places/QVPlace.h>

int main() {
    const auto place = quorvane::json::decode<quorvane::QVPlace>(R"({"id":"p1","name":"Mill","zipCode":"1384"})");
    const std::string again = quorvane::json::encode(place);
    const bool right = place._id == "p1" && place.name == "Mill" && again.find("\"zipCode\":\"1384\"") != again.npos &&
                       quorvane::Quorvane::fromStatus(quorvane::QVStatus::ERROR_NETWORK) == "ERROR_NETWORK";
    std::cout << again << "\n";
    return right ? 0 : 1;
}
