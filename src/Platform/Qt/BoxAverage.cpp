#include "Platform/Qt/BoxAverage.h"

#include <vector>

namespace quorvane::platform::qt {
namespace {

constexpr int channels = 3;

using Sums = std::vector<std::uint16_t>;

/// Adds up @p count rows, byte by byte.
void addRows(const std::uint8_t* row, std::ptrdiff_t stride, int count, Sums& sums) {
    const std::size_t size = sums.size();
    std::uint16_t* const sum = sums.data();
    if (count == 2) {
        const std::uint8_t* const next = row + stride;
        for (std::size_t i = 0; i < size; ++i) {
            sum[i] = static_cast<std::uint16_t>(row[i] + next[i]);
        }
        return;
    }
    std::copy(row, row + size, sum);
    for (int i = 1; i < count; ++i) {
        const std::uint8_t* const next = row + i * stride;
        for (std::size_t at = 0; at < size; ++at) {
            sum[at] = static_cast<std::uint16_t>(sum[at] + next[at]);
        }
    }
}

/// The average of @p columns pixels of sums over @p rows rows.
void averagePixel(const std::uint16_t* sums, int columns, int rows, std::uint8_t* target) {
    const int count = columns * rows;
    for (int channel = 0; channel < channels; ++channel) {
        int sum = 0;
        for (int column = 0; column < columns; ++column) {
            sum += sums[column * channels + channel];
        }
        target[channel] = static_cast<std::uint8_t>((sum + count / 2) / count);
    }
}

void averageRow(const Sums& sums, int width, int rows, std::uint8_t* target) {
    const std::uint16_t* sum = sums.data();
    const int last = halfOf(width) - 1;
    for (int x = 0; x < last; ++x, sum += std::ptrdiff_t{2} * channels, target += channels) {
        if (rows == 2) {
            for (int channel = 0; channel < channels; ++channel) {
                target[channel] = static_cast<std::uint8_t>((sum[channel] + sum[channel + channels] + 2) / 4);
            }
        } else {
            averagePixel(sum, 2, rows, target);
        }
    }
    averagePixel(sum, width - 2 * last, rows, target);
}

} // namespace

void halve(const PixelRows& source, std::uint8_t* target, std::ptrdiff_t targetStride) {
    Sums sums(static_cast<std::size_t>(source.width) * channels);
    const int last = halfOf(source.height) - 1;
    for (int y = 0; y <= last; ++y) {
        const int rows = y < last ? 2 : source.height - 2 * last;
        addRows(source.bytes + std::ptrdiff_t{2} * y * source.stride, source.stride, rows, sums);
        averageRow(sums, source.width, rows, target + y * targetStride);
    }
}

} // namespace quorvane::platform::qt
