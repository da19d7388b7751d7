#pragma once

#include <cstddef>
#include <vector>

#include "Internal/Views/BarcodeScanner/CodeFinder.h"
#include "Internal/Views/BarcodeScanner/GrayPicture.h"

namespace quorvane::capture {

/// Searches the pictures of one stream for codes. Each picture is searched as it is and reduced; if that finds nothing,
/// along slanted lines; if nothing still, as changed copies, which take turns from picture to picture so that none
/// costs much more than another. The copy that showed a code is the first to be tried at the next picture.
class CodeSearch {
public:
    explicit CodeSearch(const std::vector<platform::BarcodeType>& types) : finder(types) {}

    [[nodiscard]] bool isForNothing() const { return finder.isAskedForNothing(); }

    /// The codes in @p picture, the likeliest first: those that cover the picture's middle, the largest of them first;
    /// then the nearest to it. A code without a text comes last.
    [[nodiscard]] Sightings search(const GrayPicture& picture);

private:
    /// A changed copy and how to read it.
    struct Attempt {
        /// Of reading it, for each pixel that it is made from; 1 for all types in both directions.
        double cost;
        void (CodeSearch::*run)();
    };
    static const std::vector<Attempt>& attempts();

    void searchWhole();
    void searchSlanted(double offset);
    void searchChanged();
    template <int tenths>
    void searchScaled();
    template <int tenths>
    void searchSharpScaled();
    template <int degrees>
    void searchMoreSlanted();
    void searchInverted();
    void searchSharp();
    void searchSmoothed();
    void searchBordered();
    void readCopy();

    const CodeFinder finder;
    const GrayPicture* whole = nullptr;
    GrayPicture middle;
    GrayPicture reduced;
    GrayPicture copy;
    GrayPicture secondCopy;
    Sightings found;
    std::size_t next = 0;
};

} // namespace quorvane::capture
