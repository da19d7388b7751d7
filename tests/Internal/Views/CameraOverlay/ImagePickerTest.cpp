#include <QKeyEvent>
#include <QTest>
#include <algorithm>
#include <functional>
#include <utility>

#include "Internal/Views/CameraOverlay/OverlayTest.h"

namespace quorvane::capture {
namespace {

using platform::ImagePicker;
using Calls = std::vector<std::string>;

/// A camera of the host's own, which answers when the test does.
class HostCamera final : public testing::SimulatedCamera, public platform::Cameras {
public:
    using SimulatedCamera::SimulatedCamera;

    PhotoHandler answer;

    void takePhoto(bool /*withFlash*/, PhotoHandler completion) override { answer = std::move(completion); }
    /// The test keeps it.
    [[nodiscard]] std::shared_ptr<platform::Camera> defaultCamera() override { return {std::shared_ptr<void>(), this}; }
};

class ImagePickerTest : public OverlayTest {};

TEST_F(ImagePickerTest, AQuestionWithoutPhotoOptionsHasNone) {
    EXPECT_EQ(platform::captureUI()->createImagePicker(QVQuestion()), nullptr);
}

TEST_F(ImagePickerTest, ItIsACameraForStillImagesWithoutControlsOfItsOwn) {
    create();

    EXPECT_EQ(picker->sourceType, ImagePicker::SourceType::camera);
    EXPECT_EQ(picker->mediaTypes, std::vector<std::string>{"public.image"});
    EXPECT_EQ(picker->cameraCaptureMode, ImagePicker::CameraCaptureMode::photo);
    EXPECT_FALSE(picker->showsCameraControls);
}

TEST_F(ImagePickerTest, ItsFlashModeIsTheDefaultFlashState) {
    create();
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::off);

    options.defaultFlashState = true;
    create();
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::on);
}

TEST_F(ImagePickerTest, ItsOverlayLiesOverTheWholePictureAtAnySize) {
    show();
    EXPECT_EQ(overlay().view().size(), QSizeF(usualSize));

    resize({800, 300});

    EXPECT_EQ(overlay().view().size(), QSizeF(800, 300));
    EXPECT_EQ(overlay().view().position(), QPointF(0, 0));
    EXPECT_EQ(picker->preview().size(), QSizeF(800, 300));
}

TEST_F(ImagePickerTest, TheCameraRunsWhileItIsOnScreen) {
    create();
    EXPECT_FALSE(cameras->camera->isRunning());

    capture::present(*picker, *window, false);
    EXPECT_TRUE(cameras->camera->isRunning());

    picker->dismiss(false);
    EXPECT_FALSE(cameras->camera->isRunning());
    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
}

TEST_F(ImagePickerTest, ItShowsWhatTheCameraSees) {
    show();
    EXPECT_EQ(colorAt({180, 20}), Qt::black);

    cameras->camera->show(testing::plainFrame(64, 48, 235));
    settle();

    EXPECT_EQ(colorAt({180, 20}), QColor(235, 235, 235));
}

TEST_F(ImagePickerTest, APictureIsTakenByTheCameraAndToldToTheDelegateAndThePickerStays) {
    show();

    picker->takePicture();
    settle();

    EXPECT_EQ(delegate->calls, Calls{"took"});
    EXPECT_EQ(delegate->picture, cameras->camera->photo);
    EXPECT_TRUE(picker->isPresented());
    EXPECT_TRUE(cameras->camera->isRunning());
}

TEST_F(ImagePickerTest, TheFlashIsAskedForAsTheModeSays) {
    show();

    picker->takePicture();
    settle();
    picker->cameraFlashMode = FlashMode::on;
    picker->takePicture();
    settle();

    EXPECT_EQ(cameras->camera->photosWithFlash(), (std::vector<bool>{false, true}));
}

TEST_F(ImagePickerTest, ACameraWithoutAFlashIsNotAskedForOne) {
    cameras->camera->flash = false;
    options.defaultFlashState = true;
    show();
    EXPECT_FALSE(picker->isFlashAvailable());

    picker->takePicture();
    settle();

    EXPECT_EQ(picker->cameraFlashMode, FlashMode::on);
    EXPECT_EQ(cameras->camera->photosWithFlash(), std::vector<bool>{false});
}

TEST_F(ImagePickerTest, WhileAPictureIsBeingTakenAnotherIsNot) {
    cameras->camera->isSilent = true;
    show();

    picker->takePicture();
    picker->takePicture();
    settle();

    EXPECT_EQ(cameras->camera->photosWithFlash().size(), 1U);
    EXPECT_EQ(delegate->calls, Calls{});
}

TEST_F(ImagePickerTest, APictureThatCouldNotBeTakenIsAFailureAndTheNextOneMaySucceed) {
    const auto photo = std::exchange(cameras->camera->photo, nullptr);
    show();
    picker->takePicture();
    settle();
    cameras->camera->photo = photo;

    picker->takePicture();
    settle();

    EXPECT_EQ(delegate->calls, (Calls{"failed", "took"}));
}

TEST_F(ImagePickerTest, WithoutACameraItFailsWhenShownAndStays) {
    cameras->hasCamera = false;
    show();

    EXPECT_EQ(delegate->calls, Calls{"failed"});
    EXPECT_TRUE(picker->isPresented());
    EXPECT_EQ(overlay().view().state(), "failed");
    EXPECT_EQ(colorAt({180, 20}), Qt::black);
}

TEST_F(ImagePickerTest, ACameraInUseFailsAndServesTheNextShowing) {
    cameras->camera->isInUse = true;
    show();
    EXPECT_EQ(delegate->calls, Calls{"failed"});
    picker->takePicture();
    EXPECT_EQ(delegate->calls, (Calls{"failed", "failed"}));
    cameras->camera->isInUse = false;

    picker->dismiss(false);
    capture::present(*picker, *window, false);

    EXPECT_EQ(delegate->calls, (Calls{"failed", "failed", "dismissed"}));
    EXPECT_EQ(overlay().view().state(), "");
    EXPECT_TRUE(cameras->camera->isRunning());
}

TEST_F(ImagePickerTest, ACameraThatIsUnpluggedFailsOnce) {
    show();

    cameras->camera->unplug();
    settle();

    EXPECT_EQ(delegate->calls, Calls{"failed"});
    EXPECT_EQ(overlay().view().state(), "failed");
    EXPECT_TRUE(picker->isPresented());
}

TEST_F(ImagePickerTest, ACameraThatIsUnpluggedWhileAPictureIsBeingTakenFailsOnce) {
    for (const bool isPictureAnswered : {false, true}) {
        SCOPED_TRACE(isPictureAnswered);
        const auto camera = std::make_shared<testing::SimulatedCameras>(world->mainQueue());
        camera->camera->isSilent = !isPictureAnswered;
        Devices all = devices();
        all.cameras = camera;
        install(all);
        show();
        delegate->calls.clear();

        // Where it is answered, the answer comes before the camera is known to be gone.
        picker->takePicture();
        camera->camera->unplug();
        settle();

        EXPECT_EQ(delegate->calls, Calls{"failed"});
        picker->takePicture();
        EXPECT_EQ(delegate->calls, (Calls{"failed", "failed"}));
        picker->dismiss(false);
    }
}

TEST_F(ImagePickerTest, APictureThatArrivesAfterTheDismissalIsNotTold) {
    show();

    picker->takePicture();
    picker->dismiss(true);
    settle();

    EXPECT_EQ(std::count(delegate->calls.begin(), delegate->calls.end(), "took"), 0);
}

TEST_F(ImagePickerTest, APictureOfAnEarlierShowingIsNotTold) {
    show();
    picker->takePicture();
    picker->dismiss(false);
    capture::present(*picker, *window, false);

    settle();

    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
    picker->takePicture();
    settle();
    EXPECT_EQ(delegate->calls, (Calls{"dismissed", "took"}));
}

TEST_F(ImagePickerTest, ACameraMayAnswerWithoutAPictureWhenThePlatformHasGone) {
    const auto camera = std::make_shared<HostCamera>(world->mainQueue());
    Devices all = devices();
    all.cameras = camera;
    install(all);
    show();
    picker->takePicture();
    ASSERT_NE(camera->answer, nullptr);

    platform::install(nullptr);
    camera->answer(nullptr);

    EXPECT_EQ(delegate->calls, Calls{});
    picker->takePicture();
    EXPECT_EQ(delegate->calls, Calls{"failed"});
}

TEST_F(ImagePickerTest, AnAnimatedDismissalIsToldOnceItIsOver) {
    show();

    picker->dismiss(true);
    EXPECT_FALSE(picker->isPresented());
    EXPECT_EQ(delegate->calls, Calls{});
    animations.pass(ViewController::transitionMilliseconds);
    settle();

    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
    EXPECT_FALSE(cameras->camera->isRunning());
}

TEST_F(ImagePickerTest, ACameraThatIsUnpluggedWhileItFadesIsNotTold) {
    show();
    picker->dismiss(true);

    cameras->camera->unplug();
    advance(std::chrono::seconds(10));
    EXPECT_EQ(delegate->calls, Calls{});
    animations.pass(ViewController::transitionMilliseconds);

    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
}

TEST_F(ImagePickerTest, AHostMayQuitInTheCallOfThePictureOfAPickerInAWindowOfItsOwn) {
    create();
    capture::present(*picker, false);
    bool hasQuit = false;
    delegate->whenCalled = [&] {
        delegate->whenCalled = nullptr;
        hasQuit = quits();
    };

    picker->takePicture();
    settle();

    EXPECT_TRUE(hasQuit);
    EXPECT_EQ(delegate->calls, (Calls{"took", "dismissed"}));
}

TEST_F(ImagePickerTest, DismissingTwiceOrBeforeShowingTellsNothingMore) {
    create();
    picker->dismiss(false);
    EXPECT_EQ(delegate->calls, Calls{});
    capture::present(*picker, *window, false);

    picker->dismiss(false);
    picker->dismiss(true);
    settle();

    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
}

TEST_F(ImagePickerTest, TakingAPictureBeforeShowingFails) {
    create();

    picker->takePicture();

    EXPECT_EQ(delegate->calls, Calls{"failed"});
}

TEST_F(ImagePickerTest, TheWindowsEndIsADismissal) {
    show();

    window.reset();

    EXPECT_EQ(delegate->calls, Calls{"dismissed"});
    EXPECT_FALSE(cameras->camera->isRunning());
}

TEST_F(ImagePickerTest, AHostMayLetGoOfTheDelegate) {
    options.photoLevelType = LevelType::flat;
    show();
    picker->delegate.reset();

    picker->takePicture();
    cameras->camera->unplug();
    hold(0, 0);
    picker->dismiss(false);

    EXPECT_EQ(delegate->calls, Calls{});
}

TEST_F(ImagePickerTest, AHostMayLetGoOfThePickerInsideAnyCall) {
    const std::vector<std::function<void()>> causes{[this] { picker->takePicture(); }, [this] { tap(shutter()); },
                                                    [this] { picker->dismiss(false); },
                                                    [this] {
                                                        tap(cancelButton());
                                                        animations.pass(ViewController::transitionMilliseconds);
                                                    },
                                                    [this] { cameras->camera->unplug(); }};
    for (std::size_t i = 0; i < causes.size(); ++i) {
        SCOPED_TRACE(i);
        show();
        delegate->calls.clear();
        // Nothing but the host holds it, so that a sanitizer sees whoever uses it afterwards.
        delegate->whenCalled = [this] { picker = nullptr; };

        causes[i]();
        settle();

        EXPECT_EQ(delegate->calls.size(), 1U);
        EXPECT_FALSE(cameras->camera->isRunning());
    }
}

TEST_F(ImagePickerTest, AHostMayShowThePickerAgainInTheCallOfItsDismissal) {
    const std::vector<std::function<void()>> causes{[this] { picker->dismiss(false); },
                                                    [this] {
                                                        tap(cancelButton());
                                                        animations.pass(ViewController::transitionMilliseconds);
                                                    }};
    for (std::size_t i = 0; i < causes.size(); ++i) {
        SCOPED_TRACE(i);
        show();
        delegate->calls.clear();
        delegate->whenCalled = [this] {
            delegate->whenCalled = nullptr;
            capture::present(*picker, *window, false);
        };

        causes[i]();
        settle();

        EXPECT_EQ(delegate->calls, Calls{"dismissed"});
        EXPECT_TRUE(picker->isPresented());
        EXPECT_TRUE(cameras->camera->isRunning());
        EXPECT_EQ(picker->view().parentItem()->childItems().count(&picker->view()), 1);
        picker->dismiss(false);
        EXPECT_EQ(delegate->calls, (Calls{"dismissed", "dismissed"}));
    }
}

TEST_F(ImagePickerTest, AKeyThatIsHeldDownTakesOnePhoto) {
    show();
    shutter().forceActiveFocus();
    QTest::keyPress(window.get(), Qt::Key_Space);
    for (int i = 0; i < 5; ++i) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
        QCoreApplication::sendEvent(window.get(), &again);
        settle();
    }
    EXPECT_EQ(delegate->calls, Calls{"took"});
}

TEST_F(ImagePickerTest, AHostMayLetGoOfThePickerWhileItIsShownAndFramesArrive) {
    options.photoLevelType = LevelType::vertical;
    show();
    cameras->camera->show(testing::plainFrame(64, 48, 235));
    picker->takePicture();

    picker = nullptr;
    cameras->camera->show(testing::plainFrame(64, 48, 235));
    advance(std::chrono::seconds(2));

    EXPECT_EQ(delegate->calls, Calls{});
    EXPECT_FALSE(cameras->camera->isRunning());
    EXPECT_EQ(colorAt({180, 20}), Qt::white);
}

TEST_F(ImagePickerTest, ShowingTakingAndDismissingInEveryOrderIsToldAsItHappens) {
    enum class Action { show, showAgain, take, dismiss, cancel };
    std::vector<Action> actions{Action::show, Action::showAgain, Action::take, Action::dismiss, Action::cancel};
    do {
        create();
        delegate->calls.clear();
        Calls expected;
        bool isShown = false;
        for (const Action action : actions) {
            if (action == Action::show || action == Action::showAgain) {
                capture::present(*picker, *window, false);
                isShown = true;
            } else if (action == Action::take) {
                picker->takePicture();
                expected.emplace_back(isShown ? "took" : "failed");
            } else {
                const bool animated = action == Action::cancel;
                picker->dismiss(animated);
                animations.pass(animated ? ViewController::transitionMilliseconds : 0);
                if (std::exchange(isShown, false)) {
                    expected.emplace_back("dismissed");
                }
            }
            settle();
            EXPECT_EQ(picker->isPresented(), isShown);
            EXPECT_EQ(cameras->camera->isRunning(), isShown);
        }
        EXPECT_EQ(delegate->calls, expected);
        picker = nullptr;
        settle();
    } while (std::next_permutation(actions.begin(), actions.end()));
}

TEST_F(ImagePickerTest, AFailureInsideTheShowingMayDismiss) {
    cameras->hasCamera = false;
    create();
    delegate->whenCalled = [this] { picker->dismiss(false); };

    capture::present(*picker, *window, true);

    EXPECT_EQ(delegate->calls, (Calls{"failed", "dismissed"}));
    EXPECT_FALSE(picker->isPresented());
    EXPECT_EQ(colorAt({180, 20}), Qt::white);
}

} // namespace
} // namespace quorvane::capture
