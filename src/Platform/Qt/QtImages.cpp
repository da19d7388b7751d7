#include "Platform/Qt/QtImages.h"

#include <QBuffer>
#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSize>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "Platform/Qt/PictureEnd.h"
#include "Platform/Qt/QtImage.h"

namespace quorvane::platform {
namespace {

using Result = QtImages::Result;

constexpr int channels = 3;

ImageError tooLittleMemory() {
    return {"there is not enough memory for this picture"};
}

std::string sizeText(const QSize& size) {
    return std::to_string(size.width()) + " × " + std::to_string(size.height());
}

std::int64_t pixelsOf(const QSize& size) {
    return std::int64_t{size.width()} * size.height();
}

/// On white, in the one format; a null image when there is no memory for it.
QImage opaque(QImage image) {
    if (!image.hasAlphaChannel()) {
        return std::move(image).convertToFormat(QImage::Format_RGB888);
    }
    QImage flat(image.size(), QImage::Format_RGB888);
    if (!flat.isNull()) {
        flat.fill(Qt::white);
        QPainter(&flat).drawImage(0, 0, image);
    }
    return flat;
}

Result picture(QImage image) {
    if (image.isNull()) {
        return tooLittleMemory();
    }
    return std::make_shared<qt::QtImage>(std::move(image));
}

/// Whether there are fonts, without which drawings may not be opened.
bool hasFonts() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

bool isDrawing(const QByteArray& format) {
    return format == "svg" || format == "svgz" || format == "pdf";
}

Result decoded(std::string_view file) {
    if (file.empty()) {
        return ImageError{"the picture is empty"};
    }
    if (qt::isCutOff(file)) {
        return ImageError{"the picture is cut off before its end"};
    }
    QByteArray bytes = QByteArray::fromRawData(file.data(), static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead()) {
        return ImageError{"this is no picture, or of a kind that is not known here"};
    }
    if (isDrawing(reader.format()) && !hasFonts()) {
        return ImageError{"this is a drawing, and drawings are decoded in GUI applications only"};
    }
    const QSize size = reader.size();
    if (pixelsOf(size) > QtImages::mostPixels) {
        return ImageError{"the picture has " + sizeText(size) + " pixels, and at most " +
                          std::to_string(QtImages::mostPixels / 1'000'000) + " megapixels are decoded"};
    }
    // Qt allocates no more than a limit of the whole process, which is the host's to set and too low for the largest
    // pictures. An image of the right form that is there already is filled whatever the limit is.
    QImage image;
    if (size.isValid() && reader.imageFormat() != QImage::Format_Invalid) {
        image = QImage(size, reader.imageFormat());
        if (image.isNull()) {
            return tooLittleMemory();
        }
    }
    if (!reader.read(&image)) {
        return ImageError{"the picture is damaged"};
    }
    return picture(opaque(std::move(image)));
}

/// What @p make answers, or the error for a lack of memory.
template <class Make>
Result withinMemory(Make make) {
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return tooLittleMemory();
    }
}

/// The whole file; none with @p problem set.
std::optional<std::string> contentOf(const std::string& path, std::string& problem) {
    constexpr std::size_t piece = std::size_t{1} << 20U;
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content;
    while (file) {
        const std::size_t before = content.size();
        if (before > QtImages::mostFileBytes) {
            problem = "the file is larger than " + std::to_string(QtImages::mostFileBytes >> 20U) + " MiB";
            return std::nullopt;
        }
        content.resize(before + piece);
        file.read(content.data() + before, piece);
        content.resize(before + static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    }
    if (!file.eof()) {
        problem = errno == 0 ? "the file cannot be read" : std::generic_category().message(errno);
        return std::nullopt;
    }
    return content;
}

} // namespace

Result QtImages::decode(std::string_view file) {
    return withinMemory([&] { return decoded(file); });
}

Result QtImages::read(const std::string& path) {
    return withinMemory([&]() -> Result {
        std::string problem;
        const std::optional<std::string> content = contentOf(path, problem);
        if (!content) {
            return ImageError{path + ": " + problem};
        }
        Result result = decode(*content);
        if (auto* const error = std::get_if<ImageError>(&result)) {
            error->message.insert(0, path + ": ");
        }
        return result;
    });
}

Result QtImages::fromPixels(int width, int height, std::string_view pixels) {
    const std::int64_t count = std::int64_t{width} * height;
    if (width < 1 || height < 1 || count > mostPixels || pixels.size() != static_cast<std::size_t>(count) * channels) {
        return ImageError{"the pixels do not fill " + sizeText({width, height}) + " pixels of three bytes each"};
    }
    return withinMemory([&] {
        QImage image(width, height, QImage::Format_RGB888);
        const std::size_t row = static_cast<std::size_t>(width) * channels;
        for (int y = 0; y < height && !image.isNull(); ++y) {
            std::memcpy(image.scanLine(y), pixels.data() + static_cast<std::size_t>(y) * row, row);
        }
        return picture(std::move(image));
    });
}

} // namespace quorvane::platform
