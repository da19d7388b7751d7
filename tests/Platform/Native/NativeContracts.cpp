#include "Platform/Native/NativeRig.h"
#include "Platform/contract/AllContracts.h"

namespace quorvane::platform::contract {
namespace {

std::unique_ptr<Rig> makeNativeRig() {
    return std::make_unique<NativeRig>();
}

QUORVANE_INSTANTIATE_CONTRACTS(Native, &makeNativeRig);

} // namespace
} // namespace quorvane::platform::contract
