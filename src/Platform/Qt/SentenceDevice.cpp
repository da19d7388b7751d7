#include "Platform/Qt/SentenceDevice.h"

#include <algorithm>
#include <cstring>

namespace quorvane::platform::qt {

qint64 SentenceDevice::readData(char* data, qint64 most) {
    const qint64 size = std::min<qint64>(most, ready.size());
    std::memcpy(data, ready.constData(), static_cast<std::size_t>(size));
    ready.remove(0, size);
    return size;
}

} // namespace quorvane::platform::qt
