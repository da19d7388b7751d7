#include <QImage>
#include <QProcess>
#include <cstdlib>
#include <string>

#define ZX_USE_UTF8 1
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class ScanTest : public ProgramTest {
protected:
    /// A picture in the test's folder of a code with this text.
    [[nodiscard]] std::string pictureOf(const std::string& text, ZXing::BarcodeFormat format) const {
        const ZXing::BitMatrix bits = ZXing::MultiFormatWriter(format).setMargin(10).encode(text, 400, 300);
        QImage image(bits.width(), bits.height(), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                image.setPixel(x, y, bits.get(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
            }
        }
        return kept(image, "code.png");
    }

    /// The same as a drawing, with a text below it.
    [[nodiscard]] std::string drawingOf(const std::string& text) const {
        const ZXing::BitMatrix bits = ZXing::MultiFormatWriter(ZXing::BarcodeFormat::QRCode).encode(text, 0, 0);
        std::string drawing = R"(<svg xmlns="http://www.w3.org/2000/svg" width="400" height="400" viewBox="0 0 50 50">)"
                              R"(<rect width="50" height="50" fill="white"/><text x="5" y="48" font-size="3">a)"
                              "</text>";
        for (int y = 0; y < bits.height(); ++y) {
            for (int x = 0; x < bits.width(); ++x) {
                if (bits.get(x, y)) {
                    drawing += "<rect x='" + std::to_string(x + 5) + "' y='" + std::to_string(y + 5) +
                               "' width='1' height='1'/>";
                }
            }
        }
        return makeFile("code.svg", drawing + "</svg>");
    }

    [[nodiscard]] std::string emptyPicture() const {
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::white);
        return kept(image, "empty.png");
    }

    /// A video of half a second that shows a picture.
    [[nodiscard]] std::string videoOf(const std::string& picture) const {
        const std::string path = (scratch / "video.avi").string();
        EXPECT_EQ(QProcess::execute("ffmpeg", {"-loglevel", "error", "-loop", "1", "-framerate", "10", "-i",
                                               QString::fromStdString(picture), "-t", "0.5", "-c:v", "mjpeg", "-q:v",
                                               "2", QString::fromStdString(path)}),
                  0);
        return path;
    }

private:
    [[nodiscard]] std::string kept(const QImage& image, const char* name) const {
        const std::string path = (scratch / name).string();
        EXPECT_TRUE(image.save(QString::fromStdString(path)));
        return path;
    }
};

TEST_F(ScanTest, PrintsTheCodeInAPictureAndALineBreak) {
    const Ended ended = run({"scan", pictureOf("4006381333931", ZXing::BarcodeFormat::EAN13)});
    EXPECT_EQ(ended.output, "4006381333931\n");
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.exitStatus, 0);
}

TEST_F(ScanTest, PrintsACodeAsItIs) {
    const Ended ended = run({"scan", pictureOf("two\nlines, \x1b[31m and an ü", ZXing::BarcodeFormat::QRCode)});
    EXPECT_EQ(ended.output, "two\nlines, \x1b[31m and an ü\n");
    EXPECT_EQ(ended.exitStatus, 0);
}

TEST_F(ScanTest, ReadsTheTypesThatABareViewDoesNot) {
    EXPECT_EQ(run({"scan", pictureOf("SHELF-12", ZXing::BarcodeFormat::Code128)}).output, "SHELF-12\n");
    EXPECT_EQ(run({"scan", pictureOf("SHELF-12", ZXing::BarcodeFormat::Aztec)}).output, "SHELF-12\n");
}

TEST_F(ScanTest, ReadsADrawingThatHoldsText) {
    const Ended ended = run({"scan", drawingOf("in a drawing")});
    EXPECT_EQ(ended.output, "in a drawing\n");
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.exitStatus, 0);
}

TEST_F(ScanTest, ReadsAVideo) {
    const Ended ended = run({"scan", videoOf(pictureOf("in a video", ZXing::BarcodeFormat::QRCode))});
    EXPECT_EQ(ended.output, "in a video\n");
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.exitStatus, 0);
}

TEST_F(ScanTest, AsADocumentTheCodeHasAName) {
    const Ended ended = run({"scan", "--json", pictureOf("4006381333931", ZXing::BarcodeFormat::EAN13)});
    EXPECT_EQ(textIn(ended.document(), "code"), "4006381333931");
    EXPECT_EQ(textIn(ended.document(), "status"), "SUCCESS");
}

TEST_F(ScanTest, PrintsNothingAndEndsWith1WhenThereIsNoCode) {
    for (const std::string& file : {emptyPicture(), videoOf(emptyPicture())}) {
        const Ended ended = run({"scan", file});
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "");
        EXPECT_EQ(ended.exitStatus, 1);
    }
}

TEST_F(ScanTest, AsADocumentNoCodeIsASentence) {
    const Ended ended = run({"scan", "--json", emptyPicture()});
    EXPECT_EQ(textIn(ended.document(), "error"), "no barcode was read");
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.exitStatus, 1);
}

TEST_F(ScanTest, AFileThatCannotBeSeenIsToldInASentence) {
    const std::string missing = (scratch / "missing.png").string();
    const Ended noFile = run({"scan", missing});
    EXPECT_EQ(noFile.output, "");
    EXPECT_EQ(noFile.errors, "quorvane: " + missing + ": No such file or directory\n");
    EXPECT_EQ(noFile.exitStatus, 1);

    const std::string garbage = makeFile("garbage.avi", std::string(10'000, '\x5a'));
    const Ended noVideo = run({"scan", garbage});
    EXPECT_EQ(noVideo.output, "");
    EXPECT_EQ(noVideo.errors,
              "quorvane: " + garbage + ": there is neither a picture nor a video in it that is known here\n");
    EXPECT_EQ(noVideo.exitStatus, 1);
}

TEST_F(ScanTest, AWindowNeedsADisplay) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        unsetenv(variable);
    }
    const Ended ended = run({"scan", "--window", emptyPicture()});
    EXPECT_EQ(ended.errors, "quorvane: there is no display to show a window on\n");
    EXPECT_EQ(ended.exitStatus, 1);
}

} // namespace
} // namespace quorvane::tool
