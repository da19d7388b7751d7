#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QVStatus.h"
#include "Platform/Clock.h"
#include "Tracking/QVUser.h"

namespace quorvane {

/// `Quorvane::Users`: not provided in this version. Every operation answers before it returns, without a request:
/// `ERROR_PUBLISHABLE_KEY` when no key is configured, else `ERROR_UNIMPLEMENTED`. Main thread only.
class QVUsers {
public:
    using UserCallback = std::function<void(QVStatus, const std::shared_ptr<QVUser>&)>;
    using ListCallback = std::function<void(QVStatus, const std::optional<std::vector<std::shared_ptr<QVUser>>>&)>;
    using DeleteCallback = std::function<void(QVStatus, bool)>;

    QVUsers() = delete;

    static void get(const std::string& id, const UserCallback& callback);
    static void list(std::optional<int> limit, std::optional<platform::Date> updatedBefore,
                     std::optional<platform::Date> updatedAfter, const ListCallback& callback);
    static void delete_(const std::string& id, const DeleteCallback& callback);
};

} // namespace quorvane
