// An application with the camera screens that knows nothing of Qt: the file that it has for a camera holds no picture,
// and a scanner is made all the same.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <variant>

#include <Facade/Quorvane.h>
#include <Internal/Views/Capture.h>
#include <Internal/Views/Devices/FileCameras.h>
#include <Platform/Qt/QtPlatform.h>

int main() {
    const std::string home = std::filesystem::temp_directory_path() / "quorvane-stranger-capture";
    quorvane::platform::NativeOptions options;
    options.home = home;
    const auto opened = quorvane::capture::FileCameras::open("there is no such file");
    bool hasScanner = false;
    {
        const auto platform = quorvane::platform::QtPlatform::make({options, {}});
        quorvane::platform::install(platform);
        quorvane::capture::install();
        hasScanner = quorvane::Quorvane::createBarcodeScanner() != nullptr;
        quorvane::platform::install(nullptr);
    }
    std::filesystem::remove_all(home);
    const bool isRefused = std::holds_alternative<quorvane::platform::ImageError>(opened);
    std::cout << (hasScanner ? "a scanner" : "no scanner") << ", " << (isRefused ? "no file" : "a file") << "\n";
    return hasScanner && isRefused ? EXIT_SUCCESS : EXIT_FAILURE;
}
