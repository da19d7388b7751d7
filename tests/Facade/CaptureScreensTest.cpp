#include <memory>
#include <string>
#include <vector>

#include "Facade/Quorvane.h"
#include "Platform/CaptureUI.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class SomeScanner : public BarcodeScannerViewControllerType {};

class SomePicker : public platform::ImagePicker {
public:
    bool isFlashAvailable() const override { return false; }
    void takePicture() override {}
    void dismiss(bool) override {}
};

/// Makes the same screens each time.
class SomeScreens : public platform::CaptureUI {
public:
    std::shared_ptr<BarcodeScannerViewControllerType> createBarcodeScanner() override { return scanner; }
    std::shared_ptr<platform::ImagePicker> createImagePicker(const QVQuestion& question) override {
        asked = &question;
        return picker;
    }

    const std::shared_ptr<SomeScanner> scanner = std::make_shared<SomeScanner>();
    const std::shared_ptr<SomePicker> picker = std::make_shared<SomePicker>();
    const QVQuestion* asked = nullptr;
};

class CaptureScreensTest : public SimulatedTest {};

TEST_F(CaptureScreensTest, WithoutAMakerThereAreNoneAndTheLogSaysSo) {
    setLogLevel(QVLogLevel::ERROR);
    EXPECT_EQ(Quorvane::createBarcodeScanner(), nullptr);
    EXPECT_EQ(Quorvane::createImagePicker(std::make_shared<QVQuestion>()), nullptr);
    EXPECT_EQ(messages(), std::vector<std::string>(2, "there are no camera screens: no maker of them was set"));
}

TEST_F(CaptureScreensTest, ComeFromTheMakerThatWasSet) {
    const auto screens = std::make_shared<SomeScreens>();
    platform::setCaptureUI(screens);
    EXPECT_EQ(Quorvane::createBarcodeScanner(), screens->scanner);
    const auto question = std::make_shared<QVQuestion>();
    EXPECT_EQ(Quorvane::createImagePicker(question), screens->picker);
    EXPECT_EQ(screens->asked, question.get());
}

TEST_F(CaptureScreensTest, NoQuestionHasNoPicker) {
    const auto screens = std::make_shared<SomeScreens>();
    platform::setCaptureUI(screens);
    EXPECT_EQ(Quorvane::createImagePicker(nullptr), nullptr);
    EXPECT_EQ(screens->asked, nullptr);
}

TEST_F(CaptureScreensTest, AnotherPlatformForgetsTheMaker) {
    const std::weak_ptr<SomeScreens> screens = [] {
        auto made = std::make_shared<SomeScreens>();
        platform::setCaptureUI(made);
        return made;
    }();
    EXPECT_FALSE(screens.expired());
    platform::install(nullptr);
    EXPECT_TRUE(screens.expired());
}

} // namespace
} // namespace quorvane
