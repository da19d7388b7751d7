#include "testing/PhonePlatform.h"

#include <utility>

namespace quorvane::testing {
namespace {

class PhoneLocations : public platform::DerivedLocations {
public:
    PhoneLocations(PhoneHardware& theHardware, SimulatedPlatform& platform, std::shared_ptr<Kept> kept)
        : DerivedLocations(platform.clock(), platform.mainQueue(), std::move(kept)), hardware(theHardware) {}

private:
    void demandChanged() override { hardware.locationDemandChanged(); }
    void askForPermission(Permission permission) override { hardware.askForPermission(permission); }

    PhoneHardware& hardware;
};

/// Sends through another transport, and tells the phone.
class WatchedTransport : public platform::HTTPTransport {
public:
    WatchedTransport(PhoneHardware& theHardware, HTTPTransport& theOther) : hardware(theHardware), other(theOther) {}

    void send(platform::HTTPRequest request, Completion completion) override {
        const std::uint64_t id = hardware.requestSent(request);
        platform::HTTPRequest line{request.method, request.url};
        other.send(std::move(request),
                   [this, id, line = std::move(line), completion = std::move(completion)](Result result) {
                       hardware.requestAnswered(id, line, result);
                       completion(std::move(result));
                   });
    }
    void close() override { other.close(); }

private:
    PhoneHardware& hardware;
    HTTPTransport& other;
};

} // namespace

PhonePlatform::PhonePlatform(PhoneHardware& theHardware, const SimulatedOptions& options,
                             std::shared_ptr<platform::DerivedLocations::Kept> kept)
    : simulated(SimulatedPlatform::make(options)),
      phoneApplication(simulated->mainQueue(), simulated->application(),
                       [&theHardware] { return theHardware.backgroundTimeRemaining(); }),
      locations(std::make_unique<PhoneLocations>(theHardware, *simulated, std::move(kept))),
      watchedTransport(std::make_unique<WatchedTransport>(theHardware, simulated->transport())) {}

PhonePlatform::~PhonePlatform() = default;

} // namespace quorvane::testing
