#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/FakeTime.h"
#include "Platform/HTTPTransport.h"
#include "Platform/Platform.h"
#include "Platform/Registry.h"

namespace quorvane::platform {
namespace {

/// What happened, in order. It is there until the process has ended.
std::vector<std::string>& story() {
    static auto& lines = *new std::vector<std::string>;
    return lines;
}

/// A platform with the two parts that installing deals with.
class BarePlatform : public Platform {
public:
    ~BarePlatform() override { story().emplace_back("platform ends"); }

    Clock& clock() override { return time; }
    MainQueue& mainQueue() override { return queue; }
    HTTPTransport& transport() override { return wire; }
    PreferencesStore& preferences() override { std::abort(); }
    Digest& digest() override { std::abort(); }
    SecureRandom& random() override { std::abort(); }
    FileManager& files() override { std::abort(); }
    Application& application() override { std::abort(); }
    Device& device() override { std::abort(); }
    LocationManagerFactory& locationManagers() override { std::abort(); }

    FakeTime time;

private:
    struct Queue : FakeTime {
        void close() override {
            story().emplace_back("queue closes");
            FakeTime::close();
        }
    } queue;
    struct Wire : HTTPTransport {
        void send(HTTPRequest, Completion) override {}
        void close() override { story().emplace_back("transport closes"); }
    } wire;
};

struct First {
    explicit First(Platform& thePlatform) : platform(thePlatform) { story().emplace_back("first made"); }
    ~First() { story().emplace_back("first ends"); }
    First(const First&) = delete;
    First& operator=(const First&) = delete;
    Platform& platform;
};

/// Asks for another one while it is made.
struct Second {
    explicit Second(Platform&) : first(shared<First>()) { story().emplace_back("second made"); }
    ~Second() { story().emplace_back("second ends"); }
    Second(const Second&) = delete;
    Second& operator=(const Second&) = delete;
    First& first;
};

class RegistryTest : public ::testing::Test {
protected:
    RegistryTest() {
        install(nullptr);
        story().clear();
    }
    ~RegistryTest() override { install(nullptr); }
};

TEST_F(RegistryTest, ASharedInstanceIsMadeOnFirstUseAndOnce) {
    const auto platform = std::make_shared<BarePlatform>();
    install(platform);
    EXPECT_TRUE(story().empty());

    First& first = shared<First>();

    EXPECT_EQ(&first, &shared<First>());
    EXPECT_EQ(&first.platform, platform.get());
    EXPECT_EQ(&current(), platform.get());
    EXPECT_EQ(story(), std::vector<std::string>{"first made"});
}

TEST_F(RegistryTest, AnInstanceMayAskForAnotherWhileItIsMade) {
    install(std::make_shared<BarePlatform>());

    EXPECT_EQ(&shared<Second>().first, &shared<First>());

    EXPECT_EQ(story(), (std::vector<std::string>{"first made", "second made"}));
}

/// Says when it ends, to whoever is still there to read it.
template <int number>
struct Teller {
    Teller() = default;
    Teller(const Teller&) = delete;
    Teller& operator=(const Teller&) = delete;
    ~Teller() { static_cast<void>(std::fprintf(stderr, "%d ends, ", number)); }
};

/// Tells what happened before its end, which waits for a thread that asks for an instance.
struct LateAsking {
    LateAsking() = default;
    LateAsking(const LateAsking&) = delete;
    LateAsking& operator=(const LateAsking&) = delete;
    ~LateAsking() {
        for (const std::string& line : story()) {
            static_cast<void>(std::fprintf(stderr, "%s, ", line.c_str()));
        }
        std::thread([] { static_cast<void>(shared<Teller<9>>()); }).join();
    }
};

using RegistryDeathTest = RegistryTest;

TEST_F(RegistryDeathTest, AProcessThatEndsWithAPlatformInUseEndsTheInstancesInOrder) {
    EXPECT_EXIT(
        {
            install(std::make_shared<BarePlatform>());
            static_cast<void>(shared<Teller<1>>());
            static_cast<void>(shared<Teller<2>>());
            static_cast<void>(shared<Teller<3>>());
            static_cast<void>(shared<Teller<4>>());
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "4 ends, 3 ends, 2 ends, 1 ends, ");
}

TEST_F(RegistryDeathTest, AnInstanceThatIsMadeWhileTheProcessEndsEndsBeforeTheOlderOnes) {
    EXPECT_EXIT(
        {
            install(std::make_shared<BarePlatform>());
            static_cast<void>(shared<Teller<1>>());
            static_cast<void>(shared<LateAsking>());
            static_cast<void>(shared<Teller<2>>());
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "^2 ends, transport closes, queue closes, 9 ends, 1 ends, $");
}

TEST_F(RegistryTest, TheOldWorldEndsInOrderWhenAnotherPlatformIsInstalled) {
    install(std::make_shared<BarePlatform>());
    static_cast<void>(shared<Second>());
    story().clear();

    install(std::make_shared<BarePlatform>());

    EXPECT_EQ(story(), (std::vector<std::string>{"transport closes", "queue closes", "second ends", "first ends",
                                                 "platform ends"}));
}

TEST_F(RegistryTest, TheNewWorldHasInstancesOfItsOwn) {
    install(std::make_shared<BarePlatform>());
    static_cast<void>(shared<First>());
    const auto second = std::make_shared<BarePlatform>();

    install(second);

    EXPECT_EQ(&shared<First>().platform, second.get());
}

TEST_F(RegistryTest, WorkThatStillWaitsIsDroppedAndNeverRun) {
    const auto platform = std::make_shared<BarePlatform>();
    install(platform);
    const auto owned = std::make_shared<int>(0);
    current().mainQueue().post([owned] { ++*owned; });

    install(nullptr);

    EXPECT_EQ(owned.use_count(), 1);
    EXPECT_EQ(*owned, 0);
}

TEST_F(RegistryTest, APlatformThatItsProgramHoldsOutlivesItsUse) {
    auto platform = std::make_shared<BarePlatform>();
    install(platform);

    install(nullptr);

    EXPECT_EQ(platform.use_count(), 1);
    EXPECT_EQ(story(), (std::vector<std::string>{"transport closes", "queue closes"}));
}

TEST_F(RegistryTest, InstallingTellsWhetherOneIsInstalled) {
    EXPECT_FALSE(isInstalled());
    install(std::make_shared<BarePlatform>());
    EXPECT_TRUE(isInstalled());
    install(nullptr);
    EXPECT_FALSE(isInstalled());
    install(nullptr);
    EXPECT_FALSE(isInstalled());
}

/// Ends once a thread of its own has asked for another instance.
struct Asking {
    ~Asking() {
        std::thread([] { static_cast<void>(shared<First>()); }).join();
    }
};

TEST_F(RegistryTest, AThreadThatAnInstanceWaitsForAtItsEndMayAskForAnother) {
    install(std::make_shared<BarePlatform>());
    static_cast<void>(shared<Asking>());
    story().clear();

    install(nullptr);

    EXPECT_EQ(story(), (std::vector<std::string>{"transport closes", "queue closes", "first made", "first ends",
                                                 "platform ends"}));
}

TEST_F(RegistryTest, ThreadsThatAskAtOnceGetOneInstance) {
    install(std::make_shared<BarePlatform>());
    std::vector<First*> seen(8, nullptr);
    std::vector<std::thread> threads;
    for (First*& one : seen) {
        threads.emplace_back([&one] { one = &shared<First>(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(seen, std::vector<First*>(8, &shared<First>()));
    EXPECT_EQ(story().size(), 1U);
}

using RegistryDeathTest = RegistryTest;

TEST_F(RegistryDeathTest, HavingNoPlatformIsFatal) {
    EXPECT_DEATH(static_cast<void>(current()), "precondition failed: a platform must be installed");
    EXPECT_DEATH(static_cast<void>(shared<First>()), "precondition failed: a platform must be installed");
}

} // namespace
} // namespace quorvane::platform
