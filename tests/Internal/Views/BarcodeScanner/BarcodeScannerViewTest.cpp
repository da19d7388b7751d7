#include "Internal/Views/BarcodeScanner/BarcodeScannerView.h"
#include "Internal/Views/BarcodeScanner/RecordingScannerDelegate.h"
#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {
namespace {

using platform::Barcode;
using platform::BarcodeType;

class BarcodeScannerViewTest : public ScreenTest {
protected:
    BarcodeScannerViewTest() {
        view->setParentItem(window->contentItem());
        view->setSize(usualSize);
        view->delegate = host;
        sounds->whenPlayed = [this] { host->calls.emplace_back("sound"); };
    }

    void setUpAndStart() {
        view->setup();
        view->start();
    }

    void show() { cameras->camera->show(testing::plainFrame(64, 48, 128)); }

    /// Shows a frame and waits until it was read and what was found was delivered.
    void showAndRead() {
        const std::size_t before = readers->reads().size();
        show();
        ASSERT_TRUE(readers->waitForReads(before + 1));
        // The next frame is begun only once the one before was posted.
        show();
        ASSERT_TRUE(readers->waitForReads(before + 2));
        settle();
    }

    /// Until the delegate has heard so much.
    void waitForCalls(std::size_t count) {
        EXPECT_TRUE(world->runUntil([&] { return host->calls.size() >= count; }));
    }

    ItemPointer<BarcodeScannerView> view{new BarcodeScannerView(devices())};
    std::shared_ptr<RecordingScannerDelegate> host = std::make_shared<RecordingScannerDelegate>();
};

TEST_F(BarcodeScannerViewTest, ABareViewRecognisesItsFiveTypes) {
    setUpAndStart();
    EXPECT_EQ(readers->typesAsked(),
              (std::vector<std::vector<BarcodeType>>{
                  {BarcodeType::qr, BarcodeType::ean8, BarcodeType::ean13, BarcodeType::pdf417, BarcodeType::upce}}));
}

TEST_F(BarcodeScannerViewTest, HasNoSessionBeforeItsSetUpAndAnotherAfterEachOne) {
    EXPECT_EQ(view->captureSession, nullptr);
    view->start();
    view->setup();
    const auto first = view->captureSession;
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->isRunning());
    view->start();
    EXPECT_TRUE(first->isRunning());
    first->stopRunning();
    view->setup();
    EXPECT_NE(view->captureSession, first);
    EXPECT_EQ(host->calls, Calls{});
    EXPECT_TRUE(view->clip());
}

TEST_F(BarcodeScannerViewTest, ASuccessIsToldBeforeTheSessionStopsAndTheStopThereafterAndThenTheDeviceVibrates) {
    readers->find({qrCode("4006381333931")});
    setUpAndStart();
    host->whenCalled = [this](const std::string& call) {
        EXPECT_EQ(view->captureSession->isRunning(), call == "succeeded 4006381333931") << call;
    };
    show();
    waitForCalls(3);
    EXPECT_EQ(host->calls, (Calls{"succeeded 4006381333931", "stopped", "sound"}));
    EXPECT_EQ(sounds->played, std::vector<platform::SystemSound::Identifier>{4095});
    EXPECT_FALSE(cameras->camera->isRunning());
}

TEST_F(BarcodeScannerViewTest, OfSeveralCodesOnlyTheFirstCounts) {
    std::vector<Barcode> hundred;
    for (int i = 0; i < 100; ++i) {
        hundred.push_back(qrCode("code " + std::to_string(i)));
    }
    readers->find(hundred);
    setUpAndStart();
    show();
    waitForCalls(3);
    EXPECT_EQ(host->calls, (Calls{"succeeded code 0", "stopped", "sound"}));
}

TEST_F(BarcodeScannerViewTest, NothingFoundAndAFirstCodeWithoutTextAreIgnored) {
    setUpAndStart();
    showAndRead();
    readers->find({qrCode(std::nullopt), qrCode("second")});
    showAndRead();
    EXPECT_EQ(host->calls, Calls{});
    EXPECT_TRUE(view->captureSession->isRunning());
    readers->find({qrCode("first")});
    // What a frame before is told of goes first.
    for (int i = 0; i < 100 && host->calls.empty(); ++i) {
        showAndRead();
    }
    EXPECT_EQ(host->calls, (Calls{"succeeded first", "stopped", "sound"}));
}

TEST_F(BarcodeScannerViewTest, ATextIsHandedOnAsItIs) {
    const std::string texts[] = {"", std::string("a\0b\r\n\x1d\x7f", 7), "\xff\xfe", std::string(4000, 'x')};
    for (const std::string& text : texts) {
        host->calls.clear();
        readers->find({qrCode(text)});
        setUpAndStart();
        show();
        waitForCalls(3);
        EXPECT_EQ(host->calls, (Calls{"succeeded " + text, "stopped", "sound"}));
    }
}

TEST_F(BarcodeScannerViewTest, AfterASuccessFurtherFramesAreNeitherReadNorTold) {
    readers->find({qrCode("once")});
    setUpAndStart();
    show();
    ASSERT_TRUE(readers->waitForReads(1));
    show();
    ASSERT_TRUE(readers->waitForReads(2));
    waitForCalls(3);
    settle();
    show();
    settle();
    EXPECT_EQ(host->calls, (Calls{"succeeded once", "stopped", "sound"}));
    EXPECT_EQ(readers->reads().size(), 2U);
}

TEST_F(BarcodeScannerViewTest, ReadsOffTheMainThreadAndOfTheFramesThatWaitOnlyTheNewest) {
    setUpAndStart();
    readers->hold();
    cameras->camera->show(testing::plainFrame(1, 1, 0));
    ASSERT_TRUE(readers->waitForReads(1));
    for (int width = 2; width <= 9; ++width) {
        cameras->camera->show(testing::plainFrame(width, 1, 0));
    }
    readers->goOn();
    ASSERT_TRUE(readers->waitForReads(2));
    cameras->camera->show(testing::plainFrame(10, 1, 0));
    ASSERT_TRUE(readers->waitForReads(3));
    const auto reads = readers->reads();
    EXPECT_EQ(reads[0].width, 1);
    EXPECT_EQ(reads[1].width, 9);
    EXPECT_EQ(reads[2].width, 10);
    EXPECT_NE(reads[0].thread, std::this_thread::get_id());
}

TEST_F(BarcodeScannerViewTest, AnEmptyFrameIsNotRead) {
    setUpAndStart();
    cameras->camera->show({});
    show();
    ASSERT_TRUE(readers->waitForReads(1));
    EXPECT_EQ(readers->reads()[0].width, 64);
}

TEST_F(BarcodeScannerViewTest, ABareViewAimsAtTheWholePictureAndAnAimIsToldInSharesOfThePicture) {
    view->setSize({100, 100});
    setUpAndStart();
    show();
    ASSERT_TRUE(readers->waitForReads(1));
    view->setAim(QRectF(25, 25, 50, 50));
    cameras->camera->show(testing::plainFrame(400, 200, 0));
    ASSERT_TRUE(readers->waitForReads(2));
    const auto reads = readers->reads();
    EXPECT_FALSE(reads[0].aim.has_value());
    ASSERT_TRUE(reads[1].aim.has_value());
    EXPECT_DOUBLE_EQ(reads[1].aim->x, 0.375);
    EXPECT_DOUBLE_EQ(reads[1].aim->width, 0.25);
}

TEST_F(BarcodeScannerViewTest, WithoutACameraTheSetUpFailsOnceAndTheSessionRunsAllTheSame) {
    cameras->hasCamera = false;
    setUpAndStart();
    EXPECT_EQ(host->calls, Calls{"failed"});
    ASSERT_NE(view->captureSession, nullptr);
    EXPECT_TRUE(view->captureSession->isRunning());
    EXPECT_TRUE(readers->typesAsked().empty());
}

TEST_F(BarcodeScannerViewTest, ACameraThatAnotherProgramUsesFailsTheSetUpBeforeARecogniserIsMade) {
    cameras->camera->isInUse = true;
    setUpAndStart();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_TRUE(readers->typesAsked().empty());
    EXPECT_TRUE(view->captureSession->isRunning());
    EXPECT_FALSE(cameras->camera->isRunning());
}

TEST_F(BarcodeScannerViewTest, ACameraThatAnotherSessionRunsCannotBeAdded) {
    cameras->camera->start([](const auto&) {}, [] {});
    setUpAndStart();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_EQ(cameras->camera->openCount(), 1);
    EXPECT_TRUE(readers->typesAsked().empty());
}

TEST_F(BarcodeScannerViewTest, WithoutARecogniserTheSetUpFailsAndTheCameraRunsUnseen) {
    readers->knowsNothing = true;
    setUpAndStart();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_TRUE(cameras->camera->isRunning());
    show();
    settle();
    EXPECT_TRUE(view->pictureSize().isEmpty());
}

TEST_F(BarcodeScannerViewTest, ACameraThatIsUnpluggedWhileScanningFailsOnceAndStopsTheSession) {
    setUpAndStart();
    cameras->camera->unplug();
    EXPECT_EQ(host->calls, Calls{});
    settle();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_FALSE(view->captureSession->isRunning());
    show();
    settle();
    EXPECT_EQ(host->calls, Calls{"failed"});
}

TEST_F(BarcodeScannerViewTest, ACameraThatIsUnpluggedAfterAFailedSetUpIsNotToldOnceMore) {
    readers->knowsNothing = true;
    setUpAndStart();
    cameras->camera->unplug();
    settle();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_FALSE(view->captureSession->isRunning());
}

TEST_F(BarcodeScannerViewTest, ACameraThatIsUnpluggedAfterTheStopIsNotMissed) {
    setUpAndStart();
    cameras->camera->unplug();
    view->captureSession->stopRunning();
    settle();
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(BarcodeScannerViewTest, ShowsTheNewestFrame) {
    setUpAndStart();
    cameras->camera->show(testing::plainFrame(64, 48, 10));
    cameras->camera->show(testing::plainFrame(64, 48, 200));
    settle();
    EXPECT_EQ(colorAt({180, 320}), QColor(200, 200, 200));
}

TEST_F(BarcodeScannerViewTest, ADelegateThatWasLetGoOfHearsNothing) {
    readers->find({qrCode("unheard")});
    setUpAndStart();
    host.reset();
    sounds->whenPlayed = nullptr;
    show();
    EXPECT_TRUE(world->runUntil([&] { return !sounds->played.empty(); }));
    EXPECT_FALSE(view->captureSession->isRunning());
}

TEST_F(BarcodeScannerViewTest, AViewThatGoesWhileAFrameIsReadTellsNothing) {
    readers->find({qrCode("late")});
    setUpAndStart();
    show();
    ASSERT_TRUE(readers->waitForReads(1));
    view.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(cameras->camera->isRunning());
    settle();
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(BarcodeScannerViewTest, ADelegateMayLetGoOfTheViewInEachCall) {
    for (const char* const moment : {"succeeded gone", "stopped"}) {
        host->calls.clear();
        sounds->played.clear();
        view.reset(new BarcodeScannerView(devices()));
        view->delegate = host;
        readers->find({qrCode("gone")});
        host->whenCalled = [&](const std::string& call) {
            if (call == moment) {
                delete view.release();
            }
        };
        setUpAndStart();
        show();
        waitForCalls(3);
        EXPECT_EQ(host->calls, (Calls{"succeeded gone", "stopped", "sound"}));
        EXPECT_FALSE(cameras->camera->isRunning());
    }
}

} // namespace
} // namespace quorvane::capture
