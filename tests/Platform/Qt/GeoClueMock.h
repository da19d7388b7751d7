#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantList>
#include <algorithm>
#include <string>

#include "Platform/Location.h"
#include "Platform/Native/NativeMainQueue.h"
#include "support/ServiceProcess.h"

namespace quorvane::platform::qt {

/// The bus of this process's tests, a place for what Qt keeps of the user, and the one application that listens to it:
/// Qt lets no signal through to the second application of a process when the first one has ended before its event loop
/// ran.
inline const testing::PrivateBus& privateBus() {
    struct World {
        const testing::ScratchDirectory data;
        const bool isSet = setenv("XDG_DATA_HOME", data.path().c_str(), 1) == 0;
        const testing::PrivateBus bus;
        char name[6] = "rider";
        char* arguments[2] = {name, nullptr};
        int count = 1;
        QCoreApplication application{count, arguments};
    };
    static World world;
    return world.bus;
}

/// GeoClue on the tests' bus, and the user who may switch it off.
class GeoClueMock {
public:
    GeoClueMock() : bus((privateBus(), std::vector<std::string>{QUORVANE_PYTHON, QUORVANE_TEST_BUS "/geoclue.py"})) {}

    /// The device is there; @p age is how many seconds ago it was found out.
    void moveTo(Coordinate place, double accuracy = 5, double age = 0) {
        govern("MoveTo", {place.latitude, place.longitude, accuracy, age});
    }
    /// What the service says to applications: "permit", "off" (location is switched off), "refuse" or "wait".
    void answer(const QString& how) { govern("Answer", {how}); }
    /// The service is there, and answers nothing.
    void setSilent(bool silent) { govern("Silence", {silent}); }
    void leave() { govern("Leave"); }
    void comeBack() { govern("Return"); }

    /// What it was asked for, in order.
    [[nodiscard]] std::vector<std::string> calls() {
        std::vector<std::string> result;
        for (const QString& call : govern("Calls").arguments().front().toStringList()) {
            if (!call.isEmpty()) {
                result.push_back(call.toStdString());
            }
        }
        return result;
    }
    [[nodiscard]] long starts() {
        const auto all = calls();
        return std::count(all.begin(), all.end(), "Start");
    }

    /// Lets what is under way between the service, Qt and the library come to its end: what was sent before a call that
    /// is answered has arrived.
    void settle(NativeMainQueue& queue) {
        constexpr int longestConversation = 16;
        for (int i = 0; i < longestConversation; ++i) {
            (void)govern("Calls");
            queue.poll();
        }
    }

private:
    static QDBusMessage govern(const char* method, const QVariantList& arguments = {}) {
        QDBusMessage call =
            QDBusMessage::createMethodCall("quorvane.Governor", "/governor", "quorvane.Governor", method);
        call.setArguments(arguments);
        QDBusMessage reply = QDBusConnection::systemBus().call(call);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply;
    }

    const testing::ServiceProcess bus;
};

} // namespace quorvane::platform::qt
