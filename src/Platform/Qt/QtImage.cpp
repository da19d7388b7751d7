#include "Platform/Qt/QtImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageWriter>
#include <algorithm>
#include <cmath>
#include <new>

#include "Platform/Qt/BoxAverage.h"

namespace quorvane::platform::qt {
namespace {

std::optional<std::string> encoded(const QImage& image, const char* format, int quality) {
    try {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, format);
        writer.setQuality(quality);
        if (!writer.write(image)) {
            return std::nullopt;
        }
        return bytes.toStdString();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

} // namespace

std::shared_ptr<const Image> QtImage::half() const {
    QImage smaller(halfOf(image.width()), halfOf(image.height()), QImage::Format_RGB888);
    if (smaller.isNull()) {
        return nullptr;
    }
    try {
        halve({image.constBits(), image.width(), image.height(), image.bytesPerLine()}, smaller.bits(),
              smaller.bytesPerLine());
        return std::make_shared<QtImage>(std::move(smaller));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::optional<std::string> QtImage::jpeg(double quality) const {
    const double bounded = quality > 0 ? std::min(quality, 1.0) : 0; // what is no number is the lowest one
    return encoded(image, "jpeg", static_cast<int>(std::lround(bounded * 100)));
}

std::optional<std::string> QtImage::png() const {
    constexpr int ownChoice = -1;
    return encoded(image, "png", ownChoice);
}

} // namespace quorvane::platform::qt
