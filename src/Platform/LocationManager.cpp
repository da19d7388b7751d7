#include "Platform/LocationManager.h"

#include <utility>

namespace quorvane::platform {
namespace {

class FixedLocationManager : public LocationManager {
public:
    explicit FixedLocationManager(std::shared_ptr<std::optional<Location>> theLast) : last(std::move(theLast)) {}

    [[nodiscard]] std::optional<Location> location() const override { return *last; }

private:
    std::shared_ptr<std::optional<Location>> last;
};

} // namespace

std::unique_ptr<LocationManager> FixedLocationManagerFactory::make() {
    return std::make_unique<FixedLocationManager>(last);
}

} // namespace quorvane::platform
