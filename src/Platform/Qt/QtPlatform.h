#pragma once

#include <memory>

#include "Platform/Native/NativePlatform.h"
#include "Platform/Qt/QtOptions.h"

namespace quorvane::platform {

/// The native platform inside a Qt application: completions, timers and delegate calls run in Qt's event loop, the
/// device's location is known, and background tasks delay the system's sleep.
///
/// The thread that makes it is the main thread: Qt's, where an application object exists. Where none exists one
/// without a screen is made and lives as long as any such platform, so a program that wants another kind makes it
/// before. `mainQueue().run()` and its siblings run Qt's event loop; a program that runs it itself needs none of them.
class QtPlatform : public NativePlatform {
public:
    [[nodiscard]] static std::shared_ptr<QtPlatform> make(QtOptions options = {});

    explicit QtPlatform(QtOptions options);
    ~QtPlatform() override;

    [[nodiscard]] Application& application() override;
    /// Made when it is first asked for; nothing asks the location service before.
    [[nodiscard]] LocationManagerFactory& locationManagers() override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

} // namespace quorvane::platform
