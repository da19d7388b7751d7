#include "Platform/Registry.h"

#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Platform/HTTPTransport.h"
#include "Platform/MainQueue.h"
#include "Platform/Precondition.h"

namespace quorvane::platform {
namespace {

struct World {
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    /// A process that ends with a platform in use takes it out of use.
    ~World();

    std::recursive_mutex mutex;
    std::shared_ptr<Platform> platform;
    std::unordered_map<std::type_index, std::shared_ptr<void>> instances;
    std::vector<std::type_index> inOrderOfMaking;
};

World& world() {
    static World instance;
    return instance;
}

/// Takes out the instance that was made last. Where there is none, none, and the platform in use has changed places
/// with @p platform.
std::shared_ptr<void> takeLastOrReplace(World& process, std::shared_ptr<Platform>& platform) {
    const std::lock_guard lock(process.mutex);
    if (process.inOrderOfMaking.empty()) {
        process.platform.swap(platform);
        return nullptr;
    }
    auto last = process.instances.extract(process.inOrderOfMaking.back());
    process.inOrderOfMaking.pop_back();
    return std::move(last.mapped());
}

std::shared_ptr<Platform> platformOf(World& process) {
    const std::lock_guard lock(process.mutex);
    return process.platform;
}

/// Ends what was made for the platform in use, then that one.
void replacePlatform(World& process, std::shared_ptr<Platform> platform) {
    // What ends may wait for a thread of its own that asks for an instance meanwhile, so nothing ends under the lock.
    if (const std::shared_ptr<Platform> inUse = platformOf(process)) {
        inUse->transport().close();
        inUse->mainQueue().close();
    }
    while (std::shared_ptr<void> last = takeLastOrReplace(process, platform)) {
        last.reset();
    }
    platform.reset();
}

World::~World() {
    replacePlatform(*this, nullptr);
}

} // namespace

void install(std::shared_ptr<Platform> platform) {
    replacePlatform(world(), std::move(platform));
}

Platform& current() {
    World& process = world();
    const std::lock_guard lock(process.mutex);
    QV_PRECONDITION(process.platform != nullptr, "a platform must be installed (quorvane::platform::install)");
    return *process.platform;
}

bool isInstalled() {
    return platformOf(world()) != nullptr;
}

void* registry::find(std::type_index type, Maker make) {
    World& process = world();
    const std::lock_guard lock(process.mutex);
    if (const auto found = process.instances.find(type); found != process.instances.end()) {
        return found->second.get();
    }
    std::shared_ptr<void> made = make(current());
    process.inOrderOfMaking.push_back(type);
    return process.instances.emplace(type, std::move(made)).first->second.get();
}

} // namespace quorvane::platform
