#pragma once

#include <string>
#include <vector>

#include "Internal/Views/BarcodeScanner/BarcodeTypes.h"
#include "Internal/Views/BarcodeScanner/GrayPicture.h"
#include "Platform/BarcodeReader.h"

namespace quorvane::capture {

/// A code that was found in a picture.
struct Sighting {
    platform::Barcode barcode;
    /// The bytes that it holds.
    std::string content;
    /// Its middle and its area, in pixels of the picture that copies were made from.
    double x = 0;
    double y = 0;
    double area = 0;
    /// Degrees clockwise from the direction of that picture's rows to that of the code's.
    double angle = 0;

    /// False for a type of which a part can look like a whole.
    [[nodiscard]] bool isSure() const {
        return barcode.type != platform::BarcodeType::interleaved2of5 && barcode.type != platform::BarcodeType::itf14;
    }
    /// Whether both say the same.
    [[nodiscard]] bool agreesWith(const Sighting& other) const {
        return barcode.type == other.barcode.type && content == other.content;
    }
};

using Sightings = std::vector<Sighting>;

/// Runs the recogniser over one picture and adds to what was found before, each code once.
class CodeFinder {
public:
    /// How a code of bars must show itself to be believed: by so many lines of the picture that read the same.
    struct Lines {
        int sure = 2;
        /// Of Interleaved 2 of 5, of which a part can look like a whole; 0 to leave it out.
        int unsure = 4;
    };

    explicit CodeFinder(const std::vector<platform::BarcodeType>& types) : asked(types) {}

    /// Codes of bars along the picture's rows, and along its columns too if @p alsoUpright. At most one, or the
    /// recogniser ends the program where it meets the same code twice.
    void findBars(const GrayPicture& picture, Lines lines, bool alsoUpright, Sightings& found) const;

    /// Interleaved 2 of 5 along the picture's rows.
    void findUnsureBars(const GrayPicture& picture, int lines, Sightings& found) const;

    /// Codes of squares and of stacked rows, any number; of those asked for only these formats.
    void findMatrices(const GrayPicture& picture, ZXing::BarcodeFormats only, Sightings& found) const;
    void findMatrices(const GrayPicture& picture, Sightings& found) const {
        findMatrices(picture, asked.matrices(), found);
    }

    [[nodiscard]] bool isAskedFor(ZXing::BarcodeFormats matrices) const { return asked.matrices().testFlags(matrices); }

private:
    void add(const ZXing::Result& result, const GrayPicture& picture, Sightings& found) const;

    AskedTypes asked;
};

} // namespace quorvane::capture
