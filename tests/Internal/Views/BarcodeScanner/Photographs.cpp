#include "Internal/Views/BarcodeScanner/Photographs.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace quorvane::testing {
namespace {

namespace fs = std::filesystem;

/// What the digits below the bars say, where the text beside the photograph says something else.
const std::map<std::string, std::string> printed{
    {"ean13-2/23", "9784872348880"},
    {"ean13-2/28", "9784872348880"},
};

/// What is transparent is white.
QImage loaded(const fs::path& path) {
    const QImage picture(QString::fromStdString(path.string()));
    if (picture.isNull()) {
        return {};
    }
    QImage opaque(picture.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter painter(&opaque);
    painter.drawImage(0, 0, picture);
    painter.end();
    return opaque.convertToFormat(QImage::Format_Grayscale8);
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

bool Photograph::shows(const std::string& read) const {
    return read == text || (symbology == "upce" && expandedUPCE(read) == text);
}

std::vector<Photograph> photographs() {
    std::vector<Photograph> found;
    const char* const data = std::getenv("QUORVANE_TEST_DATA");
    const fs::path folder = fs::path(data == nullptr ? "" : data) / "barcodes";
    if (data == nullptr || !fs::is_directory(folder)) {
        return found;
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        fs::path path = entry.path();
        if (path.extension() != ".png" && path.extension() != ".jpg") {
            continue;
        }
        Photograph photograph;
        photograph.picture = loaded(path);
        const std::string group = path.parent_path().filename().string();
        photograph.name = group + "/" + path.stem().string();
        photograph.symbology = group.substr(0, group.find('-'));
        const auto known = printed.find(photograph.name);
        photograph.text = known == printed.end() ? contentOf(path.replace_extension(".txt")) : known->second;
        found.push_back(std::move(photograph));
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return found;
}

std::string expandedUPCE(const std::string& digits) {
    if (digits.size() != 8) {
        return digits;
    }
    const std::string six = digits.substr(1, 6);
    std::string middle;
    switch (six[5]) {
        case '0':
        case '1':
        case '2':
            middle = six.substr(0, 2) + six[5] + "0000" + six.substr(2, 3);
            break;
        case '3':
            middle = six.substr(0, 3) + "00000" + six.substr(3, 2);
            break;
        case '4':
            middle = six.substr(0, 4) + "00000" + six[4];
            break;
        default:
            middle = six.substr(0, 5) + "0000" + six[5];
    }
    return std::string("0") + digits[0] + middle + digits[7];
}

} // namespace quorvane::testing
