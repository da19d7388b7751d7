#pragma once

#include <QImage>
#include <map>
#include <string>
#include <vector>

#include "Platform/BarcodeReader.h"

namespace quorvane::testing {

/// A photograph of a code, and what a reader should say to it.
struct Photograph {
    /// "ean13-1/15".
    std::string name;
    /// "ean13".
    std::string symbology;
    std::string text;
    QImage picture;

    /// Whether a text is what is printed on the picture; the digits of UPC-E may be expanded or not.
    [[nodiscard]] bool shows(const std::string& read) const;
};

/// Those below `barcodes` in the folder that QUORVANE_TEST_DATA names; none where it is not set. Sorted by name.
[[nodiscard]] std::vector<Photograph> photographs();

struct ReadCounts {
    int read = 0;
    int misread = 0;
    int missed = 0;
};
/// For each symbology.
using ReadingReport = std::map<std::string, ReadCounts>;

/// The thirteen digits that the eight of a UPC-E code stand for; other texts as they are.
[[nodiscard]] std::string expandedUPCE(const std::string& digits);

} // namespace quorvane::testing
