#pragma once

#include <memory>
#include <type_traits>
#include <typeindex>

#include "Platform/Platform.h"

namespace quorvane::platform {

/// The shared instances of the process: one object a type, made on first use for the platform in use, and destroyed
/// when another platform is installed. Safe from any thread.
namespace registry {

using Maker = std::shared_ptr<void> (*)(Platform&);

/// The instance for @p type, made with @p make when there is none. @p make may ask for further instances.
[[nodiscard]] void* find(std::type_index type, Maker make);

} // namespace registry

/// The shared `T` of the process, constructed from the platform in use where its constructor wants one.
template <class T>
[[nodiscard]] T& shared() {
    return *static_cast<T*>(registry::find(typeid(T), [](Platform& platform) -> std::shared_ptr<void> {
        if constexpr (std::is_constructible_v<T, Platform&>) {
            return std::make_shared<T>(platform);
        } else {
            return std::make_shared<T>();
        }
    }));
}

} // namespace quorvane::platform
