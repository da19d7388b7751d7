#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <gtest/gtest.h>

#include "Platform/Qt/QtImage.h"
#include "Platform/Qt/QtImages.h"

namespace quorvane::platform::qt {

/// The picture of a result; null, and a failure, when there is none.
inline std::shared_ptr<Image> pictureIn(const QtImages::Result& result) {
    if (const auto* const error = std::get_if<ImageError>(&result)) {
        ADD_FAILURE() << error->message;
        return nullptr;
    }
    return std::get<std::shared_ptr<Image>>(result);
}

/// The sentence of a result; empty when there is a picture.
inline std::string sentenceIn(const QtImages::Result& result) {
    const auto* const error = std::get_if<ImageError>(&result);
    return error == nullptr ? std::string() : error->message;
}

inline const QImage& pixelsOf(const Image& image) {
    return dynamic_cast<const QtImage&>(image).pixels();
}

/// @p image as a file of a kind that Qt writes.
inline std::string fileOf(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format, 90)) << format;
    return bytes.toStdString();
}

/// Four coloured quarters: red, green; blue, white.
inline QImage quarters(int width, int height) {
    QImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isRight = x >= width / 2;
            const bool isLow = y >= height / 2;
            image.setPixelColor(x, y,
                                isLow ? (isRight ? QColor(Qt::white) : QColor(Qt::blue))
                                      : (isRight ? QColor(Qt::green) : QColor(Qt::red)));
        }
    }
    return image;
}

/// A JPEG @p file that notes how the camera was held: 1 to 8.
inline std::string withOrientation(const std::string& file, int orientation) {
    // A list with the one entry "orientation", a short.
    const std::string list = std::string("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18) +
                             static_cast<char>(orientation) + std::string(7, '\0');
    const std::string segment = std::string("Exif\0\0", 6) + list;
    const auto length = static_cast<char>(segment.size() + 2);
    return file.substr(0, 2) + std::string("\xFF\xE1\0", 3) + length + segment + file.substr(2);
}

} // namespace quorvane::platform::qt
