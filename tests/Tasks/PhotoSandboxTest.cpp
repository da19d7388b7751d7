#include "Models/Base64.h"
#include "Platform/Qt/QtImages.h"
#include "Tasks/TaskSandboxFixture.h"

namespace quorvane {
namespace {

/// A photo on its whole way: taken apart here, put together by the service, and fetched from it.
class PhotoSandboxTest : public TaskSandboxFixture {
protected:
    [[nodiscard]] static std::shared_ptr<platform::Image> photo(int width, int height) {
        std::string pixels;
        for (int i = 0; i < width * height; ++i) {
            pixels += {static_cast<char>(i % width * 255 / width), static_cast<char>(i / width * 255 / height), '\x60'};
        }
        const auto made = platform::QtImages::fromPixels(width, height, pixels);
        return std::get<std::shared_ptr<platform::Image>>(made);
    }

    /// What the service has under an address of its own.
    [[nodiscard]] std::string fetched(const std::string& url) {
        platform::HTTPRequest request;
        request.url = url;
        std::string body;
        bool isAnswered = false;
        phone->transport().send(request, [&](platform::HTTPTransport::Result result) {
            if (const auto* const response = std::get_if<platform::HTTPResponse>(&result)) {
                body = response->body;
            }
            isAnswered = true;
        });
        EXPECT_TRUE(runUntil([&] { return isAnswered; }));
        return body;
    }

    [[nodiscard]] QVTaskResponse submitted(const std::shared_ptr<platform::Image>& image) {
        const Submission submission;
        QVTaskService::shared().submit(*task, question("q1"), std::vector<std::string>{"task-00000-q1-a1"},
                                       std::nullopt, image, submission.record());
        EXPECT_TRUE(runUntil([&] { return submission.count() > 0; }));
        EXPECT_EQ(submission.first<0>(), QVStatus::SUCCESS);
        return submission.first<1>() ? *submission.first<1>() : QVTaskResponse();
    }
};

TEST_F(PhotoSandboxTest, HalfOfAPhotoArrivesAsTheJPEGThatWasMadeOfIt) {
    ASSERT_EQ(claim().first, QVStatus::SUCCESS);
    const auto image = photo(401, 300);

    const QVTaskResponse response = submitted(image);

    const std::string file = fetched(response.photoUrl.value_or(""));
    EXPECT_TRUE(file == image->half()->jpeg(0.9).value_or("none"));
    const auto decoded = platform::QtImages::decode(file);
    const auto* const arrived = std::get_if<std::shared_ptr<platform::Image>>(&decoded);
    ASSERT_NE(arrived, nullptr);
    EXPECT_EQ((*arrived)->width(), 200);
    EXPECT_EQ((*arrived)->height(), 150);
}

TEST_F(PhotoSandboxTest, TheSmallestPhotoAndAVeryLongOneArriveToo) {
    for (const auto& [width, height] : {std::pair(1, 1), {1, 30'000}}) {
        SCOPED_TRACE(height);
        if (height > 1) {
            QVAuthService::shared().logout();
            service = std::move(std::get<0>(sandbox::Sandbox::start()));
            startPlatform();
            SetUp();
        }
        ASSERT_EQ(claim().first, QVStatus::SUCCESS);

        const std::string file = fetched(submitted(photo(width, height)).photoUrl.value_or(""));

        const auto decoded = platform::QtImages::decode(file);
        const auto* const arrived = std::get_if<std::shared_ptr<platform::Image>>(&decoded);
        ASSERT_NE(arrived, nullptr);
        EXPECT_EQ((*arrived)->width(), 1);
        EXPECT_EQ((*arrived)->height(), std::max(height / 2, 1));
    }
}

} // namespace
} // namespace quorvane
