#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include "Models/Base64.h"

namespace quorvane {

namespace {

/// About as much as the photo of a phone.
const std::string& bytes() {
    static const std::string made = [] {
        std::string text;
        std::uint32_t number = 1;
        for (int i = 0; i < 1'500'000; ++i) {
            number = number * 1664525U + 1013904223U;
            text += static_cast<char>(number >> 24U);
        }
        return text;
    }();
    return made;
}

/// Encodes into a text that has its room already, as a data URL has.
template <class Encode>
void measure(benchmark::State& state, Encode encode) {
    std::string text((bytes().size() + 2) / 3 * 4 + 1, '\0');
    for (auto _ : state) {
        encode(text);
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    state.counters["GB/s"] =
        benchmark::Counter(static_cast<double>(bytes().size()) / 1e9, benchmark::Counter::kIsIterationInvariantRate);
}

void openssl(benchmark::State& state) {
    measure(state, [](std::string& text) {
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                        reinterpret_cast<const unsigned char*>(bytes().data()), static_cast<int>(bytes().size()));
    });
}
BENCHMARK(openssl)->Name("base64 of 1.5 MB/OpenSSL");

void ours(benchmark::State& state) {
    measure(state, [](std::string& text) {
        text.clear();
        appendBase64(text, bytes());
    });
}
BENCHMARK(ours)->Name("base64 of 1.5 MB/ours");

} // namespace

} // namespace quorvane
