#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include "Platform/Application.h"
#include "Platform/Qt/GeoClueMock.h"
#include "Platform/Qt/QtLocationTest.h"

namespace quorvane::platform::qt {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// The mock logind that python3-dbusmock has.
class LogindMock {
public:
    enum class Manner { usual, silent };

    explicit LogindMock(Manner manner = Manner::usual)
        : process((privateBus(), std::vector<std::string>{QUORVANE_PYTHON, QUORVANE_TEST_BUS "/logind.py",
                                                          manner == Manner::silent ? "silent" : "usual"})) {}

    /// "what, who, why, mode" of each inhibitor that is held.
    static std::vector<std::string> inhibitors() {
        std::vector<std::string> result;
        const QDBusMessage reply = call("org.freedesktop.login1.Manager", "ListInhibitors");
        const QDBusArgument list = qvariant_cast<QDBusArgument>(reply.arguments().front());
        list.beginArray();
        while (!list.atEnd()) {
            QString what;
            QString who;
            QString why;
            QString mode;
            uint user = 0;
            uint program = 0;
            list.beginStructure();
            list >> what >> who >> why >> mode >> user >> program;
            list.endStructure();
            result.push_back((what + ", " + who + ", " + why + ", " + mode).toStdString());
        }
        list.endArray();
        return result;
    }

    /// Sleep begins, or is over.
    static void prepareForSleep(bool begins) {
        const QVariantMap changed{{"PreparingForSleep", begins}};
        (void)call("org.freedesktop.DBus.Mock", "UpdateProperties", {"org.freedesktop.login1.Manager", changed});
        const QVariantList arguments{QVariant::fromValue(QDBusVariant(begins))};
        (void)call("org.freedesktop.DBus.Mock", "EmitSignal",
                   {"org.freedesktop.login1.Manager", "PrepareForSleep", "b", arguments});
    }

private:
    static QDBusMessage call(const char* interface, const char* method, const QVariantList& arguments = {}) {
        QDBusMessage message =
            QDBusMessage::createMethodCall("org.freedesktop.login1", "/org/freedesktop/login1", interface, method);
        message.setArguments(arguments);
        QDBusMessage reply = QDBusConnection::systemBus().call(message);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply;
    }

    const testing::ServiceProcess process;
};

struct Logind {
    LogindMock logind;
};

class BackgroundTimeTest : public Logind, public QtLocationTest {
protected:
    BackgroundTimeTest() { launch(NMEAFile{}); }

    [[nodiscard]] Application& application() { return platform->application(); }

    /// Whether the system comes to hold @p count inhibitors.
    bool heldBecomes(std::size_t count) {
        for (int i = 0; i < 1000; ++i) {
            if (LogindMock::inhibitors().size() == count) {
                return true;
            }
            platform->mainQueue().poll();
        }
        return false;
    }
};

using BackgroundTimeWithoutLogindTest = QtLocationTest;

TEST_F(BackgroundTimeWithoutLogindTest, AnInhibitorThatWasRefusedIsAskedForAnewByTheNextTask) {
    privateBus();
    launch(NMEAFile{});
    const auto first = platform->application().beginBackgroundTask("first", [] {});
    EXPECT_NE(first, Application::BackgroundTask{0});
    ASSERT_TRUE(runUntil([this] { return !output.empty(); }));

    const LogindMock logind;
    const auto second = platform->application().beginBackgroundTask("second", [] {});

    EXPECT_TRUE(runUntil([] { return LogindMock::inhibitors().size() == 1; }));
    EXPECT_THAT(LogindMock::inhibitors(), ElementsAre("sleep, rider, second, delay"));
    EXPECT_EQ(output.size(), 1U) << "one line is enough";
    platform->application().endBackgroundTask(second);
    platform->application().endBackgroundTask(first);
    EXPECT_TRUE(runUntil([] { return LogindMock::inhibitors().empty(); }));
}

TEST_F(BackgroundTimeWithoutLogindTest, ALogindThatNeverAnswersHoldsNothingUpAndOneLineSaysSo) {
    const LogindMock logind(LogindMock::Manner::silent);
    launch(NMEAFile{});

    const auto task = platform->application().beginBackgroundTask("upload", [] {});
    EXPECT_NE(task, Application::BackgroundTask{0});
    platform->mainQueue().poll();
    EXPECT_THAT(output, IsEmpty()) << "it was waited for";

    EXPECT_TRUE(runUntil([this] { return !output.empty(); }));
    platform->application().endBackgroundTask(task);
    EXPECT_THAT(output, ElementsAre(StartsWith("QuorvaneSDK: the system's sleep cannot be delayed for work in the "
                                               "background: ")));
}

TEST_F(BackgroundTimeTest, AProcessThatIsKilledHoldsNothingAnyMore) {
    {
        const testing::ServiceProcess holder({QUORVANE_SLEEP_HOLDER, home.path()});
        EXPECT_TRUE(heldBecomes(1));
        EXPECT_THAT(LogindMock::inhibitors(), ElementsAre("sleep, holder, held to the end, delay"));
        // Its end is SIGKILL.
    }

    EXPECT_TRUE(heldBecomes(0));
}

TEST_F(BackgroundTimeTest, SleepIsDelayedWhileATaskIsOpenAndBySleepOnly) {
    const auto task = application().beginBackgroundTask("upload", [] {});
    EXPECT_TRUE(heldBecomes(1));
    EXPECT_THAT(LogindMock::inhibitors(), ElementsAre("sleep, rider, upload, delay"));
    EXPECT_EQ(application().backgroundTimeRemaining(), Application::foreground);

    application().endBackgroundTask(task);

    EXPECT_TRUE(heldBecomes(0));
    EXPECT_THAT(output, IsEmpty());
}

TEST_F(BackgroundTimeTest, TasksThatOverlapHoldOneInhibitorUntilTheLastOneEnds) {
    const auto first = application().beginBackgroundTask("first", [] {});
    const auto second = application().beginBackgroundTask("second", [] {});
    EXPECT_TRUE(heldBecomes(1));

    application().endBackgroundTask(first);
    platform->mainQueue().poll();
    EXPECT_THAT(LogindMock::inhibitors(), ElementsAre("sleep, rider, first, delay"));

    application().endBackgroundTask(second);
    EXPECT_TRUE(heldBecomes(0));
}

TEST_F(BackgroundTimeTest, ATaskThatEndsBeforeTheSystemHasAnsweredLeavesNothingHeld) {
    for (int i = 0; i < 20; ++i) {
        application().endBackgroundTask(application().beginBackgroundTask("short", [] {}));
    }

    EXPECT_TRUE(heldBecomes(0));
    platform->mainQueue().poll();
    EXPECT_THAT(LogindMock::inhibitors(), IsEmpty());
}

TEST_F(BackgroundTimeTest, TheEndOfThePlatformReleasesWhatIsHeld) {
    (void)application().beginBackgroundTask("open", [] {});
    ASSERT_TRUE(heldBecomes(1));

    launch(NMEAFile{});

    EXPECT_TRUE(heldBecomes(0));
}

TEST_F(BackgroundTimeTest, TasksExpireOnceWhenSleepBeginsAndNotWhenItIsOver) {
    std::vector<std::string> expired;
    const auto open = application().beginBackgroundTask("open", [&] { expired.emplace_back("open"); });
    const auto ended = application().beginBackgroundTask("ended", [&] { expired.emplace_back("ended"); });
    application().endBackgroundTask(ended);
    ASSERT_TRUE(heldBecomes(1));

    LogindMock::prepareForSleep(true);
    EXPECT_TRUE(runUntil([&] { return !expired.empty(); }));
    LogindMock::prepareForSleep(false);
    LogindMock::prepareForSleep(true);
    for (int i = 0; i < 16; ++i) {
        (void)LogindMock::inhibitors();
        platform->mainQueue().poll();
    }

    EXPECT_THAT(expired, ElementsAre("open"));
    application().endBackgroundTask(open);
    EXPECT_TRUE(heldBecomes(0));
}

TEST_F(BackgroundTimeTest, TheEndOfSleepExpiresNothing) {
    int expired = 0;
    const auto task = application().beginBackgroundTask("open", [&] { ++expired; });
    ASSERT_TRUE(heldBecomes(1));

    LogindMock::prepareForSleep(false);
    for (int i = 0; i < 16; ++i) {
        (void)LogindMock::inhibitors();
        platform->mainQueue().poll();
    }

    EXPECT_EQ(expired, 0);
    application().endBackgroundTask(task);
}

} // namespace
} // namespace quorvane::platform::qt
