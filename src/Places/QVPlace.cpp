#include "Places/QVPlace.h"

namespace quorvane {

void QVPlace::willDecode() {
    location = std::make_shared<QVAddress>();
}

} // namespace quorvane
