#include "Facade/QVPlaces.h"

#include "Facade/Gate.h"

namespace quorvane {

void QVPlaces::create(const std::shared_ptr<QVPlace>&, QVStorageType, const Callback& callback) {
    callback(unimplementedStatus(), std::nullopt);
}

void QVPlaces::create(const PlaceList&, QVStorageType, const Callback& callback) {
    callback(unimplementedStatus(), std::nullopt);
}

} // namespace quorvane
