#include "Platform/Native/NativeRig.h"
#include "Platform/Qt/QtPlatform.h"
#include "Platform/contract/AllContracts.h"

namespace quorvane::platform::contract {
namespace {

std::unique_ptr<Rig> makeQtRig() {
    return std::make_unique<NativeRig>([](NativeOptions options) {
        return QtPlatform::make({std::move(options), {}});
    });
}

QUORVANE_INSTANTIATE_CONTRACTS(Qt, &makeQtRig);

} // namespace
} // namespace quorvane::platform::contract
