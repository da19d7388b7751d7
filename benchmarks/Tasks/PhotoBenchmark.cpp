#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <turbojpeg.h>

#include "Platform/Qt/QtImages.h"
#include "Tasks/ImageText.h"

namespace quorvane {

namespace {

constexpr int width = 4000;
constexpr int height = 3000;
constexpr int quality = 90;

/// Twelve megapixels: surfaces, edges and the grain of a sensor.
const std::string& pixels() {
    static const std::string made = [] {
        std::string bytes;
        bytes.reserve(std::size_t{3} * width * height);
        std::uint32_t number = 1;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                number = number * 1664525U + 1013904223U;
                const int grain = static_cast<int>(number >> 27U);
                const int edge = (x / 250 + y / 200) % 2 * 60;
                bytes += {static_cast<char>(x * 120 / width + edge + grain),
                          static_cast<char>(y * 120 / height + edge + grain), static_cast<char>(60 + edge + grain)};
            }
        }
        return bytes;
    }();
    return made;
}

/// Every second row and column taken together, as a plain loop does it.
std::vector<std::uint8_t> halved() {
    const auto* const source = reinterpret_cast<const std::uint8_t*>(pixels().data());
    std::vector<std::uint8_t> half(std::size_t{3} * (width / 2) * (height / 2));
    std::uint8_t* target = half.data();
    for (int y = 0; y < height; y += 2) {
        const std::uint8_t* upper = source + std::ptrdiff_t{3} * width * y;
        const std::uint8_t* lower = upper + std::ptrdiff_t{3} * width;
        for (int x = 0; x < width; x += 2, upper += 6, lower += 6) {
            for (int channel = 0; channel < 3; ++channel) {
                *target++ = static_cast<std::uint8_t>(
                    (upper[channel] + upper[channel + 3] + lower[channel] + lower[channel + 3] + 2) / 4);
            }
        }
    }
    return half;
}

void byHand(benchmark::State& state) {
    static_cast<void>(pixels());
    for (auto _ : state) {
        const std::vector<std::uint8_t> half = halved();
        const std::unique_ptr<void, int (*)(tjhandle)> compressor(tjInitCompress(), &tjDestroy);
        unsigned char* jpeg = nullptr;
        unsigned long size = 0;
        tjCompress2(compressor.get(), half.data(), width / 2, 0, height / 2, TJPF_RGB, &jpeg, &size, TJSAMP_420,
                    quality, 0);
        std::string text((size + 2) / 3 * 4 + 1, '\0');
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()), jpeg, static_cast<int>(size));
        tjFree(jpeg);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(byHand)->Name("photo of 12 megapixels to a data URL/libjpeg-turbo by hand")->Unit(benchmark::kMillisecond);

void ours(benchmark::State& state) {
    const auto made = platform::QtImages::fromPixels(width, height, pixels());
    const auto image = std::get<std::shared_ptr<platform::Image>>(made);
    std::size_t size = 0;
    for (auto _ : state) {
        const auto text = toBase64(*image->half(), ImageType::JPEG(quality / 100.0));
        size = text->size();
        benchmark::DoNotOptimize(text);
    }
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(ours)->Name("photo of 12 megapixels to a data URL/ours")->Unit(benchmark::kMillisecond);

} // namespace

} // namespace quorvane
