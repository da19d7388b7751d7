#include <utility>

#include "Platform/Qt/QtPlatform.h"
#include "tools/Receiver.h"
#include "tools/ToolPlatform.h"

namespace quorvane::tool {
namespace {

platform::PositionSource sourceOf(const Receiver& receiver) {
    switch (receiver.kind) {
        case Receiver::Kind::recording:
            return platform::NMEAFile{receiver.name, receiver.onEnd};
        case Receiver::Kind::serialPort:
            return platform::NMEASerialPort{receiver.name, receiver.baudRate};
        case Receiver::Kind::server:
            return platform::NMEASocket{receiver.name, receiver.port};
        case Receiver::Kind::service:
            break;
    }
    return platform::GeoClue{"quorvane"};
}

} // namespace

std::shared_ptr<platform::NativePlatform> platformWith(const Receiver& receiver, platform::NativeOptions options,
                                                       std::optional<QVLogLevel> logLevel) {
    return std::make_shared<RunPlatform<platform::QtPlatform>>(
        platform::QtOptions{std::move(options), sourceOf(receiver)}, logLevel);
}

} // namespace quorvane::tool
