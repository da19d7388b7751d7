#pragma once

#include <QDBusUnixFileDescriptor>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane::platform::qt {

/// Holds the system's sleep off for the few seconds that logind grants: an inhibitor of sleep in the mode "delay".
///
/// Whoever wants the device to sleep has it sleep all the same: when that begins, @p whenSleepComes is called, and
/// sleep waits until the inhibitor is released, or logind's patience (five seconds, as it is shipped) is over. Main
/// thread only; no call waits for an answer.
class SleepInhibitor {
public:
    /// @p tell gets one line, the first time that the system does not let itself be held.
    SleepInhibitor(std::function<void()> whenSleepComes, std::function<void(std::string_view line)> tell);
    SleepInhibitor(const SleepInhibitor&) = delete;
    SleepInhibitor& operator=(const SleepInhibitor&) = delete;
    ~SleepInhibitor();

    /// @p why is shown to who asks the system what holds it.
    void hold(const std::string& why);
    void release();

private:
    void complain(const std::string& problem);
    void lookWhetherSleepComes();

    const std::function<void()> sleepComes;
    const std::function<void(std::string_view line)> output;
    bool hasComplained = false;
    bool isWatching = false;
    QDBusUnixFileDescriptor held;
    /// Fires when the system says that sleep begins or is over.
    QTimer look;
    /// What is on its way lives as long as this.
    std::unique_ptr<QObject> pending;
};

} // namespace quorvane::platform::qt
