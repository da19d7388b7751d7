// A program without a screen: stores a setting in a home of its own, and asks without having a key.
#include <filesystem>
#include <iostream>

#include <Facade/Quorvane.h>
#include <Platform/Native/NativePlatform.h>
#include <Platform/PreferencesStore.h>

using quorvane::QVStatus;

int main() {
    const std::string home = std::filesystem::temp_directory_path() / "quorvane-stranger";
    quorvane::platform::NativeOptions options;
    options.home = home;
    const auto platform = quorvane::platform::NativePlatform::make(options);
    quorvane::platform::install(platform);
    platform->preferences().setString("greeting", "hello");

    QVStatus status = QVStatus::SUCCESS;
    quorvane::Quorvane::Search::tasks(quorvane::CampaignId{"c1"}, [&](QVStatus answered, const auto&, const auto&) {
        status = answered;
        platform->mainQueue().quit();
    });
    platform->mainQueue().run();

    std::cout << quorvane::Quorvane::fromStatus(status) << "\n";
    const bool right =
        status == QVStatus::ERROR_PUBLISHABLE_KEY && platform->preferences().string("greeting") == "hello";
    quorvane::platform::install(nullptr);
    std::filesystem::remove_all(home);
    return right ? 0 : 1;
}
