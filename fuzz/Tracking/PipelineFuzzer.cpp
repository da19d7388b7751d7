// Does to an application that tracks whatever the bytes say: fixes, options, answers, clock jumps, lost permissions,
// launches. What tracking promises must hold after each step and in the end.

#include <cstddef>
#include <cstdint>

#include "fuzz/Bytes.h"
#include "fuzz/Tracking/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int mostSteps = 40;
    quorvane::fuzz::Bytes bytes(data, size);
    quorvane::fuzz::World world(bytes);
    for (int steps = 0; steps < mostSteps && !bytes.isEmpty(); ++steps) {
        world.step();
    }
    world.finish();
    return 0;
}
