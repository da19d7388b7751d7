#include "sandbox/Message.h"
#include "sandbox/Photo.h"
#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

class PhotoTest : public TaskTest {
protected:
    static void expectNoPhoto(const std::string& text) { EXPECT_THROW(std::ignore = photoOf(text), Refusal) << text; }

    [[nodiscard]] RawReply fetch(const std::string& target) const {
        return ask(sandbox->dataPort(), "GET " + target + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }
};

TEST_F(PhotoTest, ADataURLOfAJPEGOrPNGIsAPhoto) {
    for (std::size_t tail = 0; tail < 4; ++tail) {
        const std::string bytes = jpeg + std::string(tail, '\xA5');
        EXPECT_EQ(photoOf("data:image/jpeg;base64," + base64(bytes)).bytes, bytes);
    }
    const Photo photo = photoOf("data:image/png;base64," + base64(png));
    EXPECT_EQ(photo.type, "image/png");
    EXPECT_EQ(photo.bytes, png);
}

TEST_F(PhotoTest, AnyOtherTextIsNone) {
    for (const char* text : {"", "photo", "/9j/4AAQ", "data:image/jpeg;base64,", "data:image/jpeg,/9j/4AAQ",
                             "data:image/gif;base64,R0lGODlh", "data:text/html;base64,/9j/4AAQ",
                             "data:image/svg+xml;base64,PHN2Zy8+", "DATA:image/jpeg;base64,/9j/4AAQ"}) {
        expectNoPhoto(text);
    }
}

TEST_F(PhotoTest, BytesThatBeginAsAnotherFileDoesAreNone) {
    expectNoPhoto("data:image/png;base64," + base64(jpeg));
    expectNoPhoto("data:image/jpeg;base64," + base64(png));
    expectNoPhoto("data:image/jpeg;base64," + base64("<script>alert(1)</script>"));
    expectNoPhoto("data:image/jpeg;base64," + base64("\xFF\xD8"));
}

TEST_F(PhotoTest, TextThatIsNoBase64IsNone) {
    for (const char* text : {"/9j/4AAQ=", "/9j/4AA", "/9j/4A\nA", "/9j/=AAQ", "/9j/4A_Q",
                             "/9j/4===", "====", "/9j/4AB=", "/9j/4B==", "/9j/ 4AAQ"}) {
        expectNoPhoto("data:image/jpeg;base64," + std::string(text));
    }
}

TEST_F(PhotoTest, APhotoIsServedWithItsTypeAndNothingElseMayBeMadeOfIt) {
    claimTour();
    QVTaskResponse response = pick(0, {0});
    response.base64 = photograph(png, "image/png").base64;
    const QVTaskResponse stored = taken(response);

    const RawReply reply = fetch(stored.photoUrl->substr(stored.photoUrl->find("/photos/")));

    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.body(), png);
    EXPECT_EQ(reply.header("Content-Type"), "image/png");
    EXPECT_EQ(reply.header("X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(reply.header("Content-Security-Policy"), "default-src 'none'; sandbox");
}

TEST_F(PhotoTest, APhotoThatIsNotThereIsNotFound) {
    expectError(fetch("/photos/none"), 404, "not_found");
    expectError(fetch("/photos/"), 404, "not_found");
    expectError(fetch("/photos/..%2F..%2Fetc%2Fpasswd"), 404, "not_found");
}

} // namespace
} // namespace quorvane::sandbox::test
