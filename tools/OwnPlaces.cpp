#include "tools/OwnPlaces.h"

#include <optional>

#include "Facade/Quorvane.h"
#include "tools/Session.h"

namespace quorvane::tool {

void storePlaces(Session& session, const QVPlaceList& places) {
    session.requirePlaceStore();
    std::optional<QVStatus> status;
    Quorvane::Places::create(places, QVStorageType::LOCAL, [&](QVStatus result, const auto&) { status = result; });
    session.require(status.value_or(QVStatus::ERROR_UNKNOWN));
}

std::set<std::string> identifiersOf(const QVPlaceList& places) {
    std::set<std::string> identifiers;
    for (const auto& place : places) {
        identifiers.insert(place->_id);
    }
    return identifiers;
}

} // namespace quorvane::tool
