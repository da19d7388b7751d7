#include <array>
#include <cstdlib>
#include <random>

#include "Cache/Native/NativeCacheTest.h"
#include "support/ChildProcess.h"

namespace quorvane {
namespace {

using quorvane::testing::ChildProcess;

/// Processes that write numbered values at once, or are killed while they do.
class DiskKillTest : public NativeCacheTest {
protected:
    static constexpr int keys = 20;

    /// A pipe through which a writer says which numbers are stored.
    class Pipe {
    public:
        Pipe() { EXPECT_EQ(pipe(ends), 0); }
        Pipe(const Pipe&) = delete;
        Pipe& operator=(const Pipe&) = delete;
        ~Pipe() {
            close(ends[0]);
            closeWriting();
        }
        void closeWriting() {
            if (ends[1] >= 0) {
                close(ends[1]);
                ends[1] = -1;
            }
        }
        void say(int number) { EXPECT_EQ(write(ends[1], &number, sizeof number), ssize_t{sizeof number}); }
        /// None once the writer has ended.
        [[nodiscard]] std::optional<int> hear() const {
            int number = 0;
            return read(ends[0], &number, sizeof number) == sizeof number ? std::optional(number) : std::nullopt;
        }

    private:
        int ends[2] = {-1, -1};
    };

    /// A value that tells its number, of any size up to some pages.
    [[nodiscard]] static std::string valueOf(int number) {
        return std::to_string(number) + ":" + std::string(static_cast<std::size_t>(number) * 7919 % 20'000, 'x');
    }

    [[nodiscard]] static platform::Date expiryOf(int number) {
        return platform::Date(std::chrono::hours(500'000) + std::chrono::seconds(number));
    }

    [[nodiscard]] static std::string keyOf(int number) { return "place." + std::to_string(number % keys); }

    /// Stores the value of @p number, whose file is dated by it.
    static void store(int number) {
        QVCache::DiskConfig dated = config();
        dated.dateProvider = [number] { return expiryOf(number) - QVCache::entryLifetime; };
        Disk(dated, files(), transformer()).add(valueOf(number), keyOf(number));
    }

    /// The number under @p key, whose value and date must be whole and belong together; -1 for none.
    static int storedNumber(Disk& disk, const std::string& key) {
        if (!files().exists(disk.makeFilePath(key))) {
            return -1;
        }
        const auto entry = disk.entry(key);
        const int number = std::atoi(entry->value.c_str());
        EXPECT_TRUE(entry->value == valueOf(number)) << entry->value.substr(0, 20);
        EXPECT_EQ(keyOf(number), key);
        EXPECT_TRUE(entry->expiry == expiryOf(number)) << number;
        return number;
    }

    /// How often writers are killed; QUORVANE_KILLS says another number.
    static int wantedKills() {
        const char* const wanted = std::getenv("QUORVANE_KILLS");
        return wanted != nullptr ? std::atoi(wanted) : 300;
    }
};

TEST_F(DiskKillTest, AProcessThatIsKilledAtAnyMomentLeavesEveryFileWholeWithItsOwnDate) {
    launch();
    const auto disk = makeDisk();
    std::mt19937 random(20240518);
    const int kills = wantedKills();
    int next = 0;
    int unannounced = 0;

    for (int round = 0; round < kills; ++round) {
        Pipe pipe;
        ChildProcess writer([&] {
            for (int number = next;; ++number) {
                store(number);
                pipe.say(number);
            }
        });
        pipe.closeWriting();
        std::array<int, keys> announced{};
        announced.fill(-1);
        int last = next - 1;
        // After so many more writes, and some way into the one that comes then.
        for (auto wanted = random() % 30; wanted > 0; --wanted) {
            last = pipe.hear().value_or(-1);
            ASSERT_GE(last, 0) << "the writer ended by itself";
            announced[static_cast<std::size_t>(last % keys)] = last;
        }
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 150);
        while (std::chrono::steady_clock::now() < moment) {
        }
        ASSERT_TRUE(writer.kill());
        while (const std::optional<int> number = pipe.hear()) {
            last = *number;
            announced[static_cast<std::size_t>(last % keys)] = last;
        }

        for (int key = 0; key < keys; ++key) {
            const int stored = storedNumber(*disk, keyOf(key));
            ASSERT_GE(stored, announced[static_cast<std::size_t>(key)]) << "lost in round " << round;
            ASSERT_LE(stored, last + 1);
            unannounced += stored == last + 1 ? 1 : 0;
        }
        next = last + 1;
        ASSERT_FALSE(HasFailure());
    }

    EXPECT_EQ(listed(directory).size(), static_cast<std::size_t>(keys));
    const std::size_t leftovers = listed(home + "/staging").size();
    EXPECT_LE(leftovers, static_cast<std::size_t>(kills));
    static_cast<void>(
        std::printf("%d kills over %d writes: every file whole with its own date (%d were stored and not "
                    "yet announced, %zu leftovers outside the directory)\n",
                    kills, next, unannounced, leftovers));
}

TEST_F(DiskKillTest, TwoProcessesOnOneDirectoryNeverShowAThirdAPartOfAFile) {
    launch();
    const auto disk = makeDisk();
    for (int number = 0; number < keys; ++number) {
        store(number);
    }
    const auto write = [](int first) {
        for (int number = first; number < 1000; number += 2) {
            store(number);
        }
    };
    ChildProcess even([&] { write(0); });
    ChildProcess odd([&] {
        // The same keys, as they go round: each process replaces what the other one wrote.
        write(1);
        write(0);
    });

    for (int round = 0; round < 100; ++round) {
        for (int key = 0; key < keys; ++key) {
            // A content may be read a moment before its date is replaced, so only the value is looked at here.
            const std::string value = disk->value(keyOf(key));
            const int number = std::atoi(value.c_str());
            ASSERT_TRUE(value == valueOf(number)) << value.substr(0, 20);
            ASSERT_EQ(keyOf(number), keyOf(key));
        }
    }
    EXPECT_TRUE(even.succeeds());
    EXPECT_TRUE(odd.succeeds());

    for (int key = 0; key < keys; ++key) {
        EXPECT_GE(storedNumber(*disk, keyOf(key)), 980);
    }
    EXPECT_EQ(listed(directory).size(), static_cast<std::size_t>(keys));
    EXPECT_LE(listed(home + "/staging").size(), 2U) << "each ended without giving up the file it replaced last";
}

} // namespace
} // namespace quorvane
