#pragma once

#include <string>
#include <utility>

#include "Platform/Native/NativePlatform.h"
#include "tests/support/ScratchDirectory.h"

namespace quorvane {

/// A native platform on a home of its own, in use while it lives.
class InstalledNative {
public:
    InstalledNative() {
        platform::NativeOptions options;
        options.home = scratch.path();
        platform::install(platform::NativePlatform::make(std::move(options)));
    }
    InstalledNative(const InstalledNative&) = delete;
    InstalledNative& operator=(const InstalledNative&) = delete;
    ~InstalledNative() { platform::install(nullptr); }

    [[nodiscard]] const std::string& home() const { return scratch.path(); }

private:
    testing::ScratchDirectory scratch;
};

} // namespace quorvane
