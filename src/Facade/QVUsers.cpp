#include "Facade/QVUsers.h"

#include "Facade/Gate.h"

namespace quorvane {

void QVUsers::get(const std::string&, const UserCallback& callback) {
    callback(unimplementedStatus(), nullptr);
}

void QVUsers::list(std::optional<int>, std::optional<platform::Date>, std::optional<platform::Date>,
                   const ListCallback& callback) {
    callback(unimplementedStatus(), std::nullopt);
}

void QVUsers::delete_(const std::string&, const DeleteCallback& callback) {
    callback(unimplementedStatus(), false);
}

} // namespace quorvane
