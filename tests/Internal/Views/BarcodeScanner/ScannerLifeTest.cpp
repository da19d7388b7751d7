#include <atomic>
#include <thread>

#include "Internal/Views/BarcodeScanner/ScannerTest.h"

namespace quorvane::capture {
namespace {

using namespace std::chrono_literals;

/// Presentation, cancel and success in every order, and hosts that let go.
using ScannerLifeTest = ScannerTest;

TEST_F(ScannerLifeTest, ATapOnCancelStopsTheSessionTellsTheStopAndDismisses) {
    present();
    bool ranAtTheStop = true;
    bool wasPresentedAtTheStop = false;
    host->whenCalled = [&](const std::string&) {
        ranAtTheStop = cameras->camera->isRunning();
        wasPresentedAtTheStop = scanner->isPresented();
    };
    tap(item("cancelControl"));
    EXPECT_EQ(host->calls, Calls{"stopped"});
    EXPECT_FALSE(ranAtTheStop);
    EXPECT_TRUE(wasPresentedAtTheStop);
    EXPECT_FALSE(scanner->isPresented());
    EXPECT_TRUE(sounds->played.empty());
    advance(10s);
    EXPECT_EQ(host->calls, Calls{"stopped"});
}

TEST_F(ScannerLifeTest, CancelIsTappedByKeysToo) {
    for (const int key : {Qt::Key_Escape, Qt::Key_Back, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        host->calls.clear();
        present();
        press(key);
        EXPECT_EQ(host->calls, Calls{"stopped"}) << key;
        EXPECT_FALSE(scanner->isPresented()) << key;
    }
}

TEST_F(ScannerLifeTest, AScreenOnItsWayOutTakesNoSecondCancel) {
    present();
    tap(item("cancelControl"));
    tap(item("cancelControl"));
    press(Qt::Key_Escape);
    EXPECT_EQ(host->calls, Calls{"stopped"});
}

TEST_F(ScannerLifeTest, ACancelBetweenScanAndSuccessIsToldAndTheSuccessComesAllTheSame) {
    present();
    scan("both");
    advance(200ms);
    tap(item("cancelControl"));
    EXPECT_EQ(host->calls, (Calls{"stopped", "stopped"}));
    EXPECT_FALSE(scanner->isPresented());
    advance(300ms);
    EXPECT_EQ(host->calls, (Calls{"stopped", "stopped", "succeeded both"}));
}

TEST_F(ScannerLifeTest, CodesThatArriveAfterACancelAreNotTold) {
    present();
    readers->find({qrCode("late")});
    cameras->camera->show(testing::plainFrame(64, 48, 0));
    ASSERT_TRUE(readers->waitForReads(1));
    tap(item("cancelControl"));
    advance(10s);
    EXPECT_EQ(host->calls, Calls{"stopped"});
}

TEST_F(ScannerLifeTest, EachPresentationScansAnewWithASessionOfItsOwn) {
    for (int i = 0; i < 2; ++i) {
        host->calls.clear();
        present();
        EXPECT_NE(scanlineColor(), Qt::green);
        EXPECT_EQ(hint(), "Point the camera at a barcode");
        scan("again");
        animations.pass(BarcodeScannerViewController::greenMilliseconds);
        advance(500ms);
        EXPECT_EQ(host->calls, (Calls{"stopped", "succeeded again"}));
    }
    EXPECT_EQ(cameras->camera->openCount(), 2);
}

TEST_F(ScannerLifeTest, IsDrawnInEachPresentationWhateverItsSize) {
    for (const QSize size : {QSize(360, 640), QSize(640, 360), QSize(360, 640)}) {
        resize(size);
        present();
        cameras->camera->show(testing::plainFrame(64, 48, 200));
        settle();
        const int dimmed = colorAt({2, 2}).lightness();
        EXPECT_GT(dimmed, 20);
        EXPECT_LT(dimmed, 100);
        capture::dismiss(*scanner, false);
        present();
        cameras->camera->show(testing::plainFrame(64, 48, 200));
        settle();
        EXPECT_EQ(colorAt({2, 2}).lightness(), dimmed);
        capture::dismiss(*scanner, false);
        EXPECT_EQ(colorAt({2, 2}), Qt::white);
    }
}

TEST_F(ScannerLifeTest, PresentedTwiceItIsSetUpOnce) {
    present();
    present();
    EXPECT_EQ(cameras->camera->openCount(), 1);
    EXPECT_TRUE(scanner->isPresented());
}

TEST_F(ScannerLifeTest, ASuccessDoesNotCloseAPresentationThatBeganAfterItsScan) {
    present();
    scan("first");
    tap(item("cancelControl"));
    present();
    advance(500ms);
    EXPECT_EQ(host->calls.back(), "succeeded first");
    EXPECT_TRUE(scanner->isPresented());
    EXPECT_TRUE(cameras->camera->isRunning());
}

TEST_F(ScannerLifeTest, AHostMayPresentAgainInTheCallOfTheSuccess) {
    present();
    host->whenCalled = [&](const std::string& call) {
        if (call == "succeeded first") {
            present();
        }
    };
    scan("first");
    advance(500ms);
    EXPECT_TRUE(scanner->isPresented());
    scan("second");
    advance(500ms);
    EXPECT_EQ(host->calls, (Calls{"stopped", "succeeded first", "stopped", "succeeded second"}));
}

TEST_F(ScannerLifeTest, AFailureEndsWithTheNextPresentation) {
    cameras->camera->isInUse = true;
    present();
    EXPECT_EQ(host->calls, Calls{"failed"});
    capture::dismiss(*scanner, false);
    cameras->camera->isInUse = false;
    present();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_EQ(hint(), "Point the camera at a barcode");
    EXPECT_TRUE(cameras->camera->isRunning());
}

TEST_F(ScannerLifeTest, AHostMayDismissInTheCallOfTheFailure) {
    cameras->hasCamera = false;
    host->whenCalled = [&](const std::string&) { capture::dismiss(*scanner); };
    capture::present(*scanner, *window);
    EXPECT_FALSE(scanner->isPresented());
    EXPECT_EQ(colorAt({180, 320}), Qt::white);
}

TEST_F(ScannerLifeTest, AHostMayTryAgainInTheCallOfTheFailure) {
    QQuickItem page;
    page.setParentItem(window->contentItem());
    page.forceActiveFocus();
    cameras->hasCamera = false;
    host->whenCalled = [&](const std::string&) {
        host->whenCalled = nullptr;
        cameras->hasCamera = true;
        capture::dismiss(*scanner, false);
        present();
    };

    present();

    EXPECT_TRUE(scanner->isPresented());
    EXPECT_TRUE(cameras->camera->isRunning());
    EXPECT_EQ(hint(), "Point the camera at a barcode");
    capture::dismiss(*scanner, false);
    EXPECT_EQ(window->activeFocusItem(), &page);
    EXPECT_FALSE(cameras->camera->isRunning());
    EXPECT_EQ(host->calls, Calls{"failed"});
}

TEST_F(ScannerLifeTest, WithoutARecogniserACameraOfAScreenThatWasDismissedMeanwhileStaysOff) {
    readers->knowsNothing = true;
    host->whenCalled = [&](const std::string&) { capture::dismiss(*scanner, false); };
    present();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_FALSE(cameras->camera->isRunning());
}

TEST_F(ScannerLifeTest, AHostMayPresentAgainInTheCallOfACancelsStop) {
    present();
    host->whenCalled = [&](const std::string&) {
        host->whenCalled = nullptr;
        capture::dismiss(*scanner, false);
        present();
    };
    tap(item("cancelControl"));
    EXPECT_TRUE(scanner->isPresented());
    EXPECT_TRUE(cameras->camera->isRunning());
}

TEST_F(ScannerLifeTest, ADismissedScannerHoldsNoCamera) {
    present();
    const std::weak_ptr<CaptureSession> session = scanner->barcodeScannerView().captureSession;
    capture::dismiss(*scanner, false);
    EXPECT_TRUE(session.expired());
}

TEST_F(ScannerLifeTest, WithItsHostTheFocusGoesBackToWhereItWas) {
    QQuickItem page;
    page.setParentItem(window->contentItem());
    page.forceActiveFocus();
    present();
    EXPECT_NE(window->activeFocusItem(), &page);
    scanner = nullptr;
    EXPECT_EQ(window->activeFocusItem(), &page);
}

TEST_F(ScannerLifeTest, DismissedByTheHostItStopsAndTellsNothing) {
    present();
    capture::dismiss(*scanner, false);
    EXPECT_FALSE(cameras->camera->isRunning());
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(ScannerLifeTest, WithItsWindowTheCameraStops) {
    present();
    window.reset();
    EXPECT_FALSE(cameras->camera->isRunning());
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(ScannerLifeTest, ClosingItsOwnWindowIsACancel) {
    capture::present(*scanner, false);
    ASSERT_NE(scanner->window(), nullptr);
    scanner->window()->close();
    EXPECT_EQ(host->calls, Calls{"stopped"});
    EXPECT_FALSE(scanner->isPresented());
}

TEST_F(ScannerLifeTest, ItMovesToAnotherWindowInsideTheCallThatItFailedInItsOwn) {
    cameras->hasCamera = false;
    host->whenCalled = [this](const std::string&) {
        host->whenCalled = nullptr;
        cameras->hasCamera = true;
        capture::dismiss(*scanner, false);
        present();
    };
    capture::present(*scanner, false);
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_TRUE(scanner->isPresented());
    EXPECT_EQ(scanner->window(), window.get());
}

TEST_F(ScannerLifeTest, ItsOwnWindowIsClosedOnce) {
    capture::present(*scanner, false);
    const QPointer<QQuickWindow> own = scanner->window();
    own->close();
    own->close();
    EXPECT_EQ(host->calls, Calls{"stopped"});

    host->calls.clear();
    capture::present(*scanner, false);
    const QPointer<QQuickWindow> another = scanner->window();
    scan("a code");
    advance(500ms);
    another->close();
    EXPECT_FALSE(another->isVisible());
    EXPECT_EQ(host->calls, (Calls{"stopped", "succeeded a code"}));
}

TEST_F(ScannerLifeTest, AHostMayQuitInEachCallOfAScannerInAWindowOfItsOwn) {
    for (const char* const moment : {"stopped", "succeeded a code"}) {
        SCOPED_TRACE(moment);
        bool hasQuit = false;
        host->whenCalled = [&](const std::string& call) {
            if (call == moment) {
                host->whenCalled = nullptr;
                hasQuit = quits();
            }
        };
        capture::present(*scanner, false);
        scan("a code");
        advance(10s);
        EXPECT_TRUE(hasQuit);
        EXPECT_FALSE(scanner->isPresented());
    }
}

TEST_F(ScannerLifeTest, DismissedByTheHostItTellsOfNoCodeWhileItFades) {
    readers->find({qrCode("late")});
    for (const bool isReadBefore : {true, false}) {
        present();
        if (isReadBefore) {
            cameras->camera->show(testing::plainFrame(64, 48, 0));
            ASSERT_TRUE(readers->waitForReads(1));
        }
        capture::dismiss(*scanner, true);
        EXPECT_FALSE(cameras->camera->isRunning());
        cameras->camera->show(testing::plainFrame(64, 48, 0));
        advance(10s);
        EXPECT_EQ(host->calls, Calls{});
        animations.pass(1000);
    }
}

TEST_F(ScannerLifeTest, DismissedByTheHostItMissesNoCameraWhileItFades) {
    present();
    capture::dismiss(*scanner, true);
    cameras->camera->unplug();
    advance(10s);
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(ScannerLifeTest, AHostThatLetsItsDelegateGoHearsNothing) {
    const std::weak_ptr<RecordingScannerDelegate> gone = [&] {
        auto other = std::make_shared<RecordingScannerDelegate>();
        scanner->BarcodeScannerViewControllerType::delegate = other;
        return other;
    }();
    EXPECT_TRUE(gone.expired());
    present();
    readers->find({qrCode("unheard")});
    cameras->camera->show(testing::plainFrame(64, 48, 0));
    EXPECT_TRUE(world->runUntil([&] { return !sounds->played.empty(); }));
    advance(500ms);
    EXPECT_FALSE(scanner->isPresented());
    EXPECT_EQ(host->calls, Calls{});
}

TEST_F(ScannerLifeTest, LetGoOfWhileFramesArriveItStopsAndTellsNothing) {
    present();
    readers->find({qrCode("late")});
    cameras->camera->show(testing::plainFrame(64, 48, 0));
    ASSERT_TRUE(readers->waitForReads(1));
    scanner.reset();
    EXPECT_FALSE(cameras->camera->isRunning());
    cameras->camera->show(testing::plainFrame(64, 48, 0));
    advance(10s);
    EXPECT_EQ(host->calls, Calls{});
    EXPECT_EQ(colorAt({180, 320}), Qt::white);
}

TEST_F(ScannerLifeTest, FramesMayArriveOnAThreadOfTheirOwnWhileItIsShownDismissedAndLetGo) {
    readers->find({qrCode("a code")});
    for (int i = 0; i < 20; ++i) {
        newScanner();
        present();
        const std::shared_ptr<platform::Camera> camera = cameras->camera;
        std::atomic<bool> isOver = false;
        std::thread frames([&] {
            while (!isOver) {
                cameras->camera->show(testing::plainFrame(64, 48, 128));
            }
        });
        if (i % 2 == 0) {
            capture::dismiss(*scanner, false);
            settle();
        }
        scanner = nullptr;
        isOver = true;
        frames.join();
        settle();
        EXPECT_FALSE(camera->isRunning());
    }
}

TEST_F(ScannerLifeTest, LetGoOfBetweenScanAndSuccessItTellsNoMore) {
    present();
    scan("never");
    scanner.reset();
    advance(10s);
    animations.pass(1000);
    EXPECT_EQ(host->calls, Calls{"stopped"});
}

TEST_F(ScannerLifeTest, AHostMayLetGoOfItInAnyCall) {
    for (const char* moment : {"stopped", "succeeded bye", "failed"}) {
        host->calls.clear();
        cameras->hasCamera = std::string(moment) != "failed";
        newScanner();
        host->whenCalled = [&](const std::string& call) {
            if (call == moment) {
                scanner.reset();
            }
        };
        present();
        if (scanner) {
            scan("bye");
            advance(10s);
        }
        EXPECT_EQ(host->calls.back(), moment);
        EXPECT_EQ(colorAt({180, 320}), Qt::white);
    }
}

TEST_F(ScannerLifeTest, AHostMayLetGoOfItInTheCallOfItsCancel) {
    host->whenCalled = [&](const std::string&) { scanner.reset(); };
    present();
    tap(item("cancelControl"));
    EXPECT_EQ(host->calls, Calls{"stopped"});
    EXPECT_EQ(colorAt({180, 320}), Qt::white);
}

} // namespace
} // namespace quorvane::capture
