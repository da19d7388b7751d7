#include "tools/OwnPlaces.h"

#include <optional>

#include "Facade/Quorvane.h"
#include "Platform/FileManager.h"
#include "tools/Failure.h"
#include "tools/Session.h"

namespace quorvane::tool {

void storePlaces(Session& session, const QVPlaceList& places) {
    // Without its folder the library's store would end the program.
    platform::FileManager& files = session.platform().files();
    const std::string folder = files.cachesDirectory() + "/qvplaces.cache";
    if (const std::error_code error = files.createDirectory(folder)) {
        throw Failure("places cannot be stored in " + folder + ": " + error.message());
    }
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
