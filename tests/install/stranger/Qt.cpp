// A Qt application that knows nothing of Qt itself: work comes back through the event loop.
#include <chrono>
#include <filesystem>
#include <iostream>

#include <Facade/Quorvane.h>
#include <Platform/PreferencesStore.h>
#include <Platform/Qt/QtPlatform.h>

int main() {
    const std::string home = std::filesystem::temp_directory_path() / "quorvane-stranger-qt";
    quorvane::platform::NativeOptions options;
    options.home = home;
    bool ran = false;
    {
        const auto platform = quorvane::platform::QtPlatform::make({options, {}});
        quorvane::platform::install(platform);
        platform->mainQueue().postAfter(std::chrono::milliseconds(1), [&] {
            ran = true;
            platform->mainQueue().quit();
        });
        platform->mainQueue().run();
        quorvane::platform::install(nullptr);
    }
    std::filesystem::remove_all(home);
    std::cout << (ran ? "ran" : "did not run") << "\n";
    return ran ? 0 : 1;
}
