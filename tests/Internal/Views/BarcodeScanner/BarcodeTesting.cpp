#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

#define ZX_USE_UTF8

#include <QPainter>
#include <algorithm>

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include "Internal/Views/BarcodeScanner/ZXingBarcodeReaders.h"

namespace quorvane::testing {
namespace {

using ZXing::BarcodeFormat;

BarcodeFormat writtenAs(BarcodeType type) {
    switch (type) {
        case BarcodeType::aztec:
            return BarcodeFormat::Aztec;
        case BarcodeType::code128:
            return BarcodeFormat::Code128;
        case BarcodeType::code39:
        case BarcodeType::code39Mod43:
            return BarcodeFormat::Code39;
        case BarcodeType::code93:
            return BarcodeFormat::Code93;
        case BarcodeType::dataMatrix:
            return BarcodeFormat::DataMatrix;
        case BarcodeType::interleaved2of5:
        case BarcodeType::itf14:
            return BarcodeFormat::ITF;
        case BarcodeType::qr:
            return BarcodeFormat::QRCode;
        case BarcodeType::ean8:
            return BarcodeFormat::EAN8;
        case BarcodeType::ean13:
            return BarcodeFormat::EAN13;
        case BarcodeType::pdf417:
            return BarcodeFormat::PDF417;
        case BarcodeType::upce:
            return BarcodeFormat::UPCE;
    }
    return BarcodeFormat::None;
}

QImage drawn(const ZXing::BitMatrix& bits, int module, int height) {
    const bool isBars = bits.height() == 1;
    constexpr int margin = 10;
    QImage modules(bits.width() + 2 * margin, isBars ? 1 : bits.height() + 2 * margin, QImage::Format_Grayscale8);
    modules.fill(Qt::white);
    for (int y = 0; y < bits.height(); ++y) {
        for (int x = 0; x < bits.width(); ++x) {
            if (bits.get(x, y)) {
                modules.scanLine(isBars ? y : y + margin)[x + margin] = 0;
            }
        }
    }
    return modules.scaled(modules.width() * module, isBars ? height : modules.height() * module);
}

} // namespace

const std::vector<BarcodeType>& allBarcodeTypes() {
    using enum BarcodeType;
    static const std::vector<BarcodeType> types{
        aztec, code128, code39, code39Mod43, code93, dataMatrix, interleaved2of5, itf14, qr, ean8, ean13, pdf417, upce};
    return types;
}

const std::vector<Sample>& sampleCodes() {
    static const std::vector<Sample> samples{
        {BarcodeType::aztec, "An Aztec code"},
        {BarcodeType::code128, "Code-128 abc"},
        {BarcodeType::code39, "CODE 39"},
        {BarcodeType::code39Mod43, "MOD 43I"},
        {BarcodeType::code93, "CODE-93"},
        {BarcodeType::dataMatrix, "A Data Matrix code"},
        {BarcodeType::interleaved2of5, "1234567895"},
        {BarcodeType::itf14, "30712345000010"},
        {BarcodeType::qr, "https://quorvane.example/shelf?id=7"},
        {BarcodeType::ean8, "48512343"},
        {BarcodeType::ean13, "5000213002834"},
        {BarcodeType::pdf417, "A PDF417 code"},
        {BarcodeType::upce, "04124498"},
    };
    return samples;
}

platform::VideoFrame grayFrame(const QImage& picture) {
    const auto pixels = std::make_shared<QImage>(picture.convertToFormat(QImage::Format_Grayscale8));
    platform::VideoFrame frame;
    frame.width = pixels->width();
    frame.height = pixels->height();
    frame.planes[0] = {pixels->constBits(), static_cast<std::size_t>(pixels->bytesPerLine())};
    frame.owner = pixels;
    return frame;
}

std::unique_ptr<platform::BarcodeReader> barcodeReader(const std::vector<BarcodeType>& types) {
    return capture::ZXingBarcodeReaders().make(types);
}

std::vector<Barcode> readTwice(const platform::VideoFrame& frame, const std::vector<BarcodeType>& types,
                               const std::optional<platform::BarcodeReader::Area>& aim) {
    const auto reader = barcodeReader(types);
    (void)reader->read(frame, aim);
    return reader->read(frame, aim);
}

std::vector<Barcode> readTwice(const QImage& picture, const std::vector<BarcodeType>& types) {
    return readTwice(grayFrame(picture), types);
}

std::vector<Barcode> readWithin(int count, const QImage& picture, const std::vector<BarcodeType>& types) {
    const auto reader = barcodeReader(types);
    const platform::VideoFrame frame = grayFrame(picture);
    std::vector<Barcode> found;
    for (int i = 0; i < count && found.empty(); ++i) {
        found = reader->read(frame, std::nullopt);
    }
    return found;
}

QImage drawnCode(BarcodeType type, const std::string& text, int module, int height) {
    ZXing::MultiFormatWriter writer(writtenAs(type));
    const bool isASCII = std::all_of(text.begin(), text.end(), [](char unit) { return (unit & 0x80) == 0; });
    if (!isASCII) {
        writer.setEncoding(ZXing::CharacterSet::UTF8);
    }
    return drawn(writer.setMargin(0).encode(text, 1, 1), module, height);
}

QImage codeOfBytes(const std::vector<std::uint8_t>& bytes) {
    ZXing::MultiFormatWriter writer(BarcodeFormat::QRCode);
    writer.setMargin(0).setEncoding(ZXing::CharacterSet::ISO8859_1);
    return drawn(writer.encode(std::wstring(bytes.begin(), bytes.end()), 1, 1), 3, 0);
}

QImage placed(const QImage& code, double degrees, QSize size, QPoint offset) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(QColor(240, 240, 240));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(size.width() / 2.0 + offset.x(), size.height() / 2.0 + offset.y());
    painter.rotate(degrees);
    painter.drawImage(QPointF(-code.width() / 2.0, -code.height() / 2.0), code);
    painter.end();
    return picture.convertToFormat(QImage::Format_Grayscale8);
}

QImage noisy(const QImage& picture, double deviation, unsigned seed) {
    QImage result = picture.convertToFormat(QImage::Format_Grayscale8);
    std::mt19937 engine(seed);
    std::normal_distribution<> noise(0, deviation);
    for (int y = 0; y < result.height(); ++y) {
        uchar* const row = result.scanLine(y);
        for (int x = 0; x < result.width(); ++x) {
            row[x] = static_cast<uchar>(std::clamp(row[x] + noise(engine), 0.0, 255.0));
        }
    }
    return result;
}

} // namespace quorvane::testing
