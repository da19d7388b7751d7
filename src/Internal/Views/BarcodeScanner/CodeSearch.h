#pragma once

#include <cstddef>
#include <vector>

#include "Internal/Views/BarcodeScanner/CodeFinder.h"
#include "Internal/Views/BarcodeScanner/GrayPicture.h"

namespace quorvane::capture {

/// Searches the pictures of one stream for codes. Each picture is searched as it is and at half its size; if that finds
/// nothing, along slanted lines; if nothing still, as changed copies of it or of its middle, which take turns from
/// picture to picture so that none costs much more than another. The copy that showed a code is the first to be tried
/// next, of as much of the picture: what is read once is read again where the next picture shows the same.
class CodeSearch {
public:
    explicit CodeSearch(const std::vector<platform::BarcodeType>& types) : finder(types) {}

    /// The codes in @p picture, the likeliest first: the nearest to its middle. Codes without a text come last.
    [[nodiscard]] Sightings search(const GrayPicture& picture);

private:
    /// A way to look at a picture, or at a part of it, that costs more than it finds.
    struct Attempt {
        /// What one pixel costs, compared with searching it as it is.
        double cost;
        /// Looks at the whole picture rather than at as much of its middle as there is time for.
        bool isForWhole;
        void (CodeSearch::*run)();
    };
    static const std::vector<Attempt>& attempts();

    void searchAsItIs();
    void searchSlanted();
    /// Codes of bars that slant about as much, in a picture that may be stretched in that direction.
    void readBarsAt(const GrayPicture& picture, double degrees, double stretch);
    void completeUnsure(const GrayPicture& picture, double stretch);
    void searchChanged();
    void cropMiddle(double pixels);

    void readCopy();
    template <int percent>
    void readScaled();
    template <int percent>
    void readSharp();
    template <int degrees>
    void readBarsBetween();
    void readBarsStretched();
    void readInvertedSlanted();
    template <int degrees>
    void readRowsTurned();
    template <int row>
    void readWindows();
    void readInverted();
    void readInvertedBars();
    void readSmoothed();
    void readBordered();
    void readBullseyes();

    const CodeFinder finder;
    const GrayPicture* whole = nullptr;
    GrayPicture middle;
    GrayPicture reduced;
    GrayPicture copy;
    GrayPicture secondCopy;
    Sightings found;
    /// Whose turn it is.
    std::size_t next = 0;
    /// How much of the middle it saw when it showed a code in the picture before; 0: it did not.
    double repeatedPixels = 0;
};

} // namespace quorvane::capture
