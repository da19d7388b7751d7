#include <csignal>
#include <cstdio>
#include <random>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Platform/Native/PreferencesFixture.h"

extern char** environ;

namespace quorvane::platform::native {
namespace {

/// A process that writes numbered preferences for ever.
class Writer {
public:
    Writer(const std::string& file, bool synchronizes) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        posix_spawn_file_actions_addclose(&actions, ends[1]);
        std::string program = QUORVANE_PREFERENCES_WRITER;
        std::string path = file;
        std::string mode = synchronizes ? "1" : "0";
        char* const arguments[] = {program.data(), path.data(), mode.data(), nullptr};
        EXPECT_EQ(posix_spawn(&process, program.c_str(), &actions, nullptr, arguments, environ), 0);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        acknowledgements = ends[0];
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { close(acknowledgements); }

    /// The next number that is stored; none once the process has ended.
    std::optional<std::int64_t> next() const {
        std::int64_t number = 0;
        // A write of eight bytes into a pipe is never divided.
        return read(acknowledgements, &number, sizeof number) == sizeof number ? std::optional(number) : std::nullopt;
    }

    /// How the process ended, after a kill.
    int kill() const {
        ::kill(process, SIGKILL);
        int status = 0;
        waitpid(process, &status, 0);
        return status;
    }

private:
    pid_t process = -1;
    int acknowledgements = -1;
};

class NativePreferencesKill : public NativePreferencesTest {
protected:
    /// What was written last under each key, as far as it can be told from the number.
    void expectWhole(const SQLitePreferences& store, std::int64_t number) {
        EXPECT_TRUE(lines.empty()) << lines[0];
        for (std::int64_t key = 0; key < 40; ++key) {
            const std::optional<std::string> text = store.string("text" + std::to_string(key));
            if (text) {
                const std::int64_t writtenAt = std::strtoll(text->c_str(), nullptr, 10);
                const auto size = static_cast<std::size_t>(writtenAt * 7919 % 3000);
                EXPECT_TRUE(*text == std::to_string(writtenAt) + ":" + std::string(size, 'x'));
                EXPECT_EQ(writtenAt % 40, key);
                EXPECT_GT(writtenAt, number - 40);
                EXPECT_LE(writtenAt, number + 1);
            }
        }
    }
};

TEST_F(NativePreferencesKill, NothingThatWasStoredIsLostWhenTheProcessIsKilledAtAnyMoment) {
    constexpr int kills = 200;
    std::mt19937 random(20240518);
    std::int64_t known = 0;
    std::int64_t unannounced = 0;
    int beforeTheFirst = 0;

    for (int round = 0; round < kills; ++round) {
        const Writer writer(path, round % 3 == 0);
        // Killed after so many more acknowledgements: wherever it then is. None: while it starts and opens the file.
        const int wanted = round % 10 == 0 ? 0 : static_cast<int>(random() % 300);
        for (int i = 0; i < wanted; ++i) {
            const std::optional<std::int64_t> number = writer.next();
            ASSERT_TRUE(number.has_value()) << "the writer ended by itself";
            known = *number;
        }
        const int status = writer.kill();
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        // What it could still announce before it died counts as well.
        const std::int64_t announced = known;
        while (const std::optional<std::int64_t> number = writer.next()) {
            known = *number;
        }
        beforeTheFirst += wanted == 0 && known == announced ? 1 : 0;

        const auto store = open();
        const std::int64_t stored = store->integer("number").value_or(0);
        ASSERT_GE(stored, known) << "lost in round " << round;
        ASSERT_LE(stored, known + 1);
        unannounced += stored - known;
        known = stored;
        expectWhole(*store, stored);
    }

    EXPECT_EQ(sql("PRAGMA integrity_check"), "ok");
    EXPECT_GT(known, 10'000);
    static_cast<void>(
        std::printf("%d kills over %lld numbered writes lost nothing (%lld were stored and not yet "
                    "announced, %d processes died before their first)\n",
                    kills, static_cast<long long>(known), static_cast<long long>(unannounced), beforeTheFirst));
}

TEST_F(NativePreferencesKill, AnotherProcessReadsEachNumberAsSoonAsItIsStored) {
    const auto store = open();
    const Writer writer(path, true);

    for (int i = 0; i < 2000; ++i) {
        // The second reading is of what the first one has fetched, unless another number was stored in between.
        const std::int64_t before = store->integer("number").value_or(0);
        EXPECT_GE(store->integer("number").value_or(0), before);
        const std::optional<std::int64_t> stored = writer.next();
        ASSERT_TRUE(stored);
        ASSERT_GE(store->integer("number").value_or(0), *stored);
    }
    static_cast<void>(writer.kill());
}

TEST_F(NativePreferencesKill, TwoProcessesThatWriteAtOnceLoseNothingEither) {
    for (int round = 0; round < 10; ++round) {
        const auto own = open();
        const Writer writer(path, true);
        std::int64_t known = 0;
        for (int i = 0; i < 200; ++i) {
            own->setInteger("own", i);
            EXPECT_EQ(own->integer("own"), i);
            known = writer.next().value_or(-1);
        }
        writer.kill();

        EXPECT_GE(own->integer("number").value_or(0), known);
        EXPECT_EQ(own->integer("own"), 199);
    }
    EXPECT_TRUE(lines.empty()) << lines[0];
    EXPECT_EQ(sql("PRAGMA integrity_check"), "ok");
}

} // namespace
} // namespace quorvane::platform::native
