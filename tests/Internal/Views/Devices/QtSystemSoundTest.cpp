#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QVariantMap>

#include "Internal/Views/Devices/DeviceTest.h"
#include "Internal/Views/Devices/QtSystemSound.h"

namespace quorvane::capture {

/// The session's feedback service, as far as the library knows it.
class FeedbackService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.sigxcpu.Feedback")

public:
    QStringList events;

    Q_SLOT uint TriggerFeedback(const QString& application, const QString& event, const QVariantMap& hints,
                                int timeout) {
        EXPECT_FALSE(application.isEmpty());
        EXPECT_TRUE(hints.isEmpty());
        EXPECT_EQ(timeout, -1);
        events << event;
        return 1;
    }
};

namespace {

class QtSystemSoundTest : public DeviceTest {
protected:
    QtSystemSoundTest() {
        daemon.start("dbus-daemon",
                     {"--session", "--nofork", "--print-address", "--address=unix:dir=" + folder.path()});
        EXPECT_TRUE(daemon.waitForReadyRead());
        const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
        EXPECT_TRUE(QDBusConnection::connectToBus(address, client).isConnected());
        EXPECT_TRUE(QDBusConnection::connectToBus(address, server).isConnected());
    }
    ~QtSystemSoundTest() override {
        QDBusConnection::disconnectFromBus(client);
        QDBusConnection::disconnectFromBus(server);
        daemon.kill();
        daemon.waitForFinished();
    }

    void serve() {
        QDBusConnection bus(server);
        EXPECT_TRUE(bus.registerObject("/org/sigxcpu/Feedback", &service, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(bus.registerService("org.sigxcpu.Feedback"));
    }

    const QString client = "quorvane-test-client";
    const QString server = "quorvane-test-server";
    QProcess daemon;
    FeedbackService service;
    int bells = 0;
    QtSystemSound sound{client, [this] { ++bells; }};
};

TEST_F(QtSystemSoundTest, AVibrationIsAskedOfTheFeedbackService) {
    serve();
    sound.play(platform::SystemSound::vibration);
    ASSERT_TRUE(waitFor([&] { return !service.events.isEmpty(); }));
    EXPECT_EQ(service.events, QStringList("button-pressed"));
    sound.play(platform::SystemSound::vibration);
    ASSERT_TRUE(waitFor([&] { return service.events.size() == 2; }));
    EXPECT_EQ(bells, 0);
}

TEST_F(QtSystemSoundTest, WithoutTheServiceTheBellRings) {
    sound.play(platform::SystemSound::vibration);
    EXPECT_EQ(bells, 0);
    ASSERT_TRUE(waitFor([&] { return bells > 0; }));
    EXPECT_EQ(bells, 1);
}

TEST_F(QtSystemSoundTest, WithoutABusTheBellRingsAtOnce) {
    QtSystemSound alone("quorvane-no-such-bus", [this] { ++bells; });
    alone.play(platform::SystemSound::vibration);
    EXPECT_EQ(bells, 1);
}

TEST_F(QtSystemSoundTest, OtherSoundsAreNotPlayed) {
    QtSystemSound alone("quorvane-no-such-bus", [this] { ++bells; });
    alone.play(1000);
    EXPECT_EQ(bells, 0);
}

} // namespace
} // namespace quorvane::capture

#include "QtSystemSoundTest.moc"
