#pragma once

#include <memory>

#include "Core/QuorvaneDelegate.h"
#include "Platform/Registry.h"

namespace quorvane {

/// What every service has: one shared instance, made on first use with the platform in use and gone when another one
/// is installed, and the host's delegate, held weakly. `class S : public SharedService<S>`.
template <class Service>
class SharedService {
public:
    SharedService() = default;
    SharedService(const SharedService&) = delete;
    SharedService& operator=(const SharedService&) = delete;

    [[nodiscard]] static Service& shared() { return platform::shared<Service>(); }

    /// Main thread only.
    std::weak_ptr<QuorvaneDelegate> delegate;

protected:
    ~SharedService() = default;
};

} // namespace quorvane
