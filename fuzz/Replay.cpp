#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Gives a fuzz target each file of the named folders once, as its fuzzer does to begin with; the target ends the
/// program where it finds a fault.
int main(int count, char** arguments) {
    int files = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            std::printf("%s\n", entry.path().filename().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
