#pragma once

#include <QString>
#include <functional>

#include "Platform/SystemSound.h"

namespace quorvane::capture {

/// Vibrates by the feedback service of the user's session; where there is none the system's bell rings.
class QtSystemSound final : public platform::SystemSound {
public:
    QtSystemSound();
    /// @p theBus names a connection of Qt's, which is the session's otherwise.
    QtSystemSound(QString theBus, std::function<void()> theBell);

    void play(Identifier sound) override;

private:
    const QString bus;
    const std::function<void()> bell;
};

} // namespace quorvane::capture
