#include <iostream>

#include <Facade/Quorvane.h>
#include <Platform/Native/NativePlatform.h>

using quorvane::Quorvane;

int main() {
    const auto platform = quorvane::platform::NativePlatform::make();
    quorvane::platform::install(platform);
    Quorvane::initialize("SANDBOX--first-search");
    Quorvane::Search::places({{46.05, 14.5}}, 5000, {}, {}, {}, 10, [&](auto status, const auto&, const auto& places) {
        std::cout << Quorvane::fromStatus(status) << "\n";
        for (const auto& place : places.value_or(quorvane::QVPlaceList{})) {
            std::cout << place->name << "\n";
        }
        platform->mainQueue().quit();
    });
    platform->mainQueue().run();
}
