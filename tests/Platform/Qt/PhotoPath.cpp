// Takes the way of a photo, from its file to the text that is submitted, and prints how many bytes that took at most
// beside what the process held before, and the picture's width and height.
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>
#include <variant>

#include "Platform/Qt/QtImages.h"
#include "Tasks/ImageText.h"

namespace {

/// A line of what the system tells about this process, in bytes.
std::int64_t statusOf(const std::string& name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != name + ":") {
    }
    std::int64_t kibibytes = 0;
    status >> kibibytes;
    return kibibytes * 1024;
}

} // namespace

int main(int count, char** arguments) {
    using namespace quorvane;
    if (count != 2) {
        return 2;
    }
    // What the library needs once, whatever the picture: plugins, tables.
    static_cast<void>(platform::QtImages::decode("\xFF\xD8\xFF\xD9"));
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak is what is held now
    const std::int64_t before = statusOf("VmRSS");
    const auto result = platform::QtImages::read(arguments[1]);
    const auto* const image = std::get_if<std::shared_ptr<platform::Image>>(&result);
    if (image == nullptr) {
        return 1;
    }
    const auto text = toBase64(*(*image)->half(), ImageType::JPEG(0.9));
    std::cout << statusOf("VmHWM") - before << " " << (*image)->width() << " " << (*image)->height() << "\n";
    return text ? 0 : 1;
}
