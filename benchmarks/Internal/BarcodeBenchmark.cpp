// Before ZXing's headers, which define one of its names as a macro.
#include <zbar.h>

#define ZX_USE_UTF8

#include <QImage>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <ZXing/ReadBarcode.h>
#include <benchmark/benchmark.h>

#include "tests/Internal/Views/BarcodeScanner/BarcodeTesting.h"
#include "tests/Internal/Views/BarcodeScanner/Photographs.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;
using Area = platform::BarcodeReader::Area;
using Text = std::optional<std::string>;

ZXing::ImageView viewOf(const QImage& picture) {
    return {picture.constBits(), picture.width(), picture.height(), ZXing::ImageFormat::Lum,
            static_cast<int>(picture.bytesPerLine())};
}

/// UPC-A with the leading zero that makes it EAN-13.
Text defaults(const QImage& picture) {
    const ZXing::Result result = ZXing::ReadBarcode(viewOf(picture));
    if (!result.isValid()) {
        return std::nullopt;
    }
    return (result.format() == ZXing::BarcodeFormat::UPCA ? "0" : "") + result.text();
}

Text withZBar(const QImage& picture) {
    zbar::ImageScanner scanner;
    scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 1);
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        pixels.insert(pixels.end(), picture.constScanLine(y), picture.constScanLine(y) + picture.width());
    }
    zbar::Image image(static_cast<unsigned>(picture.width()), static_cast<unsigned>(picture.height()), "Y800",
                      pixels.data(), pixels.size());
    scanner.scan(image);
    const auto first = image.symbol_begin();
    if (first == image.symbol_end()) {
        return std::nullopt;
    }
    return (first->get_type() == zbar::ZBAR_UPCA ? "0" : "") + first->get_data();
}

/// Two thirds of a second at thirty frames a second.
Text ours(const QImage& picture) {
    const std::vector<Barcode> found = readWithin(20, picture);
    return found.empty() ? Text() : found.front().text;
}

void readPhotographs(benchmark::State& state, const std::string& symbology,
                     const std::function<Text(const QImage&)>& read) {
    std::vector<Photograph> pictures = photographs();
    pictures.erase(std::remove_if(pictures.begin(), pictures.end(),
                                  [&](const Photograph& photograph) { return photograph.symbology != symbology; }),
                   pictures.end());
    if (pictures.empty()) {
        state.SkipWithError("QUORVANE_TEST_DATA names no folder with photographs of barcodes");
    }
    ReadCounts counts;
    for (auto _ : state) {
        counts = {};
        for (const Photograph& photograph : pictures) {
            const Text text = read(photograph.picture);
            ++(!text ? counts.missed : photograph.shows(*text) ? counts.read : counts.misread);
        }
    }
    state.counters["read"] = counts.read;
    state.counters["misread"] = counts.misread;
    state.counters["missed"] = counts.missed;
}

QImage plainWall() {
    return placed(QImage(), 0);
}

/// Light that changes slowly, and the grain of a sensor.
QImage grainyRoom() {
    QImage picture = placed(QImage(), 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.scanLine(y)[x] = static_cast<uchar>(150 + 60 * std::sin(x / 97.0) * std::cos(y / 55.0));
        }
    }
    return noisy(picture, 3);
}

/// Boxes and strokes of all sizes.
QImage fullShelf() {
    QImage picture = grainyRoom();
    std::mt19937 engine(7);
    for (int i = 0; i < 1500; ++i) {
        const int width = 2 + static_cast<int>(engine() % 60);
        const int height = 2 + static_cast<int>(engine() % 40);
        const int left = static_cast<int>(engine() % static_cast<unsigned>(picture.width() - width));
        const int top = static_cast<int>(engine() % static_cast<unsigned>(picture.height() - height));
        const int level = static_cast<int>(engine() % 256);
        for (int y = top; y < top + height; ++y) {
            std::fill_n(picture.scanLine(y) + left, width, static_cast<uchar>(level));
        }
    }
    return noisy(picture, 2);
}

QImage withSlantedCode() {
    return noisy(placed(drawnCode(BarcodeType::ean13, "5000213002834"), 30), 3);
}

void defaultsPass(benchmark::State& state, QImage (*make)()) {
    const QImage picture = make();
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZXing::ReadBarcode(viewOf(picture)));
    }
}

void oursPass(benchmark::State& state, QImage (*make)(), const std::vector<BarcodeType>& types,
              const std::optional<Area>& aim) {
    const platform::VideoFrame frame = grayFrame(make());
    const auto reader = barcodeReader(types);
    for (auto _ : state) {
        benchmark::DoNotOptimize(reader->read(frame, aim));
    }
}

/// So many that every copy has its turn.
constexpr int frames = 48;
/// Three quarters of the shorter side, as a square in the middle.
const Area square{0.289, 0.125, 0.422, 0.75};
const std::vector<BarcodeType> viewTypes{BarcodeType::qr, BarcodeType::ean8, BarcodeType::ean13, BarcodeType::pdf417,
                                         BarcodeType::upce};

const bool isRegistered = [] {
    const std::vector<std::pair<std::string, QImage (*)()>> scenes{{"a plain wall", &plainWall},
                                                                   {"a grainy room", &grainyRoom},
                                                                   {"a full shelf", &fullShelf},
                                                                   {"a slanted code", &withSlantedCode}};
    for (const auto& [scene, make] : scenes) {
        const std::string group = "a frame of 1280x720, " + scene + "/";
        const auto add = [&](const std::string& name, auto function, const auto&... arguments) {
            benchmark::RegisterBenchmark((group + name).c_str(), function, arguments...)
                ->Iterations(frames)
                ->Unit(benchmark::kMillisecond);
        };
        add("the recogniser's defaults", &defaultsPass, make);
        add("ours, all types", &oursPass, make, allBarcodeTypes(), std::optional<Area>());
        add("ours, all types, aimed", &oursPass, make, allBarcodeTypes(), std::optional(square));
        add("ours, a view's five types", &oursPass, make, viewTypes, std::optional<Area>());
    }
    for (const std::string symbology : {"aztec", "code128", "code39", "code93", "datamatrix", "ean13", "ean8", "itf",
                                        "pdf417", "qrcode", "upca", "upce"}) {
        const std::string group = "photographs of " + symbology + "/";
        const auto add = [&](const std::string& name, Text (*read)(const QImage&)) {
            benchmark::RegisterBenchmark((group + name).c_str(), &readPhotographs, symbology, read)->Iterations(1);
        };
        add("the recogniser's defaults", &defaults);
        add("zbar", &withZBar);
        add("ours, up to 20 frames", &ours);
    }
    return true;
}();

} // namespace
} // namespace quorvane
