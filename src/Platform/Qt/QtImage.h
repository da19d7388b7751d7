#pragma once

#include <QImage>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Image.h"

namespace quorvane::platform::qt {

/// A picture in `QImage::Format_RGB888`.
class QtImage final : public Image {
public:
    /// Not null, and in the format above.
    explicit QtImage(QImage theImage) : image(std::move(theImage)) {}

    [[nodiscard]] int width() const override { return image.width(); }
    [[nodiscard]] int height() const override { return image.height(); }
    [[nodiscard]] std::shared_ptr<const Image> half() const override;
    [[nodiscard]] std::optional<std::string> jpeg(double quality) const override;
    [[nodiscard]] std::optional<std::string> png() const override;

    [[nodiscard]] const QImage& pixels() const { return image; }

private:
    const QImage image;
};

} // namespace quorvane::platform::qt
