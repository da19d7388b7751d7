#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>

#include "Platform/Native/NativePlatform.h"

namespace quorvane::platform {

/// The system's location service, GeoClue 2 on D-Bus.
struct GeoClue {
    /// What the user knows the application by: the name of its desktop file, without ".desktop".
    std::string desktopId = "quorvane";
};

/// A recording of NMEA 0183 sentences, given at the pace of its own times from when a location is first wanted.
struct NMEAFile {
    std::string path;
    /// Called once, on the main thread, when the recording is over or cannot be read. None: nobody is told.
    std::function<void()> onEnd = {};
};

/// A receiver of NMEA 0183 sentences on a serial port.
struct NMEASerialPort {
    /// "/dev/ttyUSB0".
    std::string device;
    /// One of 4800, 9600, 19200, 38400, 57600, 115200 and 230400.
    int baudRate = 4800;
};

/// A server that sends NMEA 0183 sentences to whoever connects.
struct NMEASocket {
    std::string host;
    std::uint16_t port = 0;
};

/// Where the device's fixes come from.
///
/// The fixes of NMEA sentences bear the time at which they come, by the system's clock. Their accuracy is 5 metres for
/// each unit of horizontal dilution, and 10 metres where no dilution is told. Permission to use them is always given.
using PositionSource = std::variant<GeoClue, NMEAFile, NMEASerialPort, NMEASocket>;

/// How a Qt platform is set up. Everything has a default.
struct QtOptions {
    NativeOptions native;
    PositionSource positions;
};

} // namespace quorvane::platform
