#include <random>

#include "Platform/Native/PreferencesFixture.h"

namespace quorvane::platform::native {
namespace {

class NativePreferencesDamage : public NativePreferencesTest {
protected:
    /// Some pages of preferences, all in the file itself.
    std::string healthyFile() {
        {
            const auto store = open();
            for (int i = 0; i < 300; ++i) {
                store->setString("key" + std::to_string(i), std::string(100, 'v'));
            }
        }
        return content(path);
    }

    void expectStartsEmptyWithTheFileKeptAs(const std::string& aside, const std::string& damaged) {
        const auto store = open();

        EXPECT_EQ(store->string("key1"), std::nullopt);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NE(lines[0].find(aside), std::string::npos) << lines[0];
        EXPECT_EQ(lines[0].find('\n'), std::string::npos);
        EXPECT_TRUE(content(aside) == damaged);
        EXPECT_EQ(mode(aside), 0600);
        store->setString("new", "value");
        EXPECT_EQ(open()->string("new"), "value");
        EXPECT_EQ(mode(path), 0600);
        EXPECT_EQ(lines.size(), 1U);
        lines.clear();
    }
};

TEST_F(NativePreferencesDamage, AFileThatIsNoDatabaseIsPutAside) {
    const std::string text = "These are not preferences.\n" + std::string(5000, 'x');
    overwrite(text);

    expectStartsEmptyWithTheFileKeptAs(path + ".damaged", text);
}

TEST_F(NativePreferencesDamage, AnotherDamagedFileGetsANameOfItsOwn) {
    overwrite("first " + std::string(5000, 'x'));
    expectStartsEmptyWithTheFileKeptAs(path + ".damaged", "first " + std::string(5000, 'x'));

    overwrite("second " + std::string(5000, 'x'));
    std::filesystem::remove(path + "-wal");
    expectStartsEmptyWithTheFileKeptAs(path + ".damaged-2", "second " + std::string(5000, 'x'));
}

TEST_F(NativePreferencesDamage, AFileThatIsCutShortIsPutAside) {
    const std::string whole = healthyFile();
    overwrite(whole.substr(0, whole.size() / 2));

    expectStartsEmptyWithTheFileKeptAs(path + ".damaged", whole.substr(0, whole.size() / 2));
}

TEST_F(NativePreferencesDamage, AFileWithADamagedPageIsPutAside) {
    std::string damaged = healthyFile();
    damaged.replace(2 * 4096, 4096, std::string(4096, '\xFF'));
    overwrite(damaged);

    expectStartsEmptyWithTheFileKeptAs(path + ".damaged", damaged);
}

TEST_F(NativePreferencesDamage, ADatabaseOfAnotherProgramIsPutAside) {
    static_cast<void>(sql("CREATE TABLE preferences (name TEXT)"));

    const auto store = open();
    store->setString("k", "v");

    EXPECT_EQ(store->string("k"), "v");
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_NE(content(path + ".damaged").find("CREATE TABLE preferences (name TEXT)"), std::string::npos);
}

TEST_F(NativePreferencesDamage, ADamageThatShowsInTheMiddleOfARunIsPutAsideToo) {
    std::string damaged = healthyFile();
    const auto store = open();
    EXPECT_EQ(store->string("key1"), std::string(100, 'v'));
    damaged.replace(4096, damaged.size() - 4096, std::string(damaged.size() - 4096, '\xFF'));
    overwrite(damaged);
    // Another connection's write makes this one read its pages again.
    static_cast<void>(sql("PRAGMA user_version = 7"));

    for (int i = 0; i < 300; ++i) {
        static_cast<void>(store->string("key" + std::to_string(i)));
    }

    EXPECT_EQ(lines.size(), 1U);
    store->setString("new", "value");
    EXPECT_EQ(store->string("new"), "value");
    EXPECT_EQ(open()->string("new"), "value");
    EXPECT_TRUE(std::filesystem::exists(path + ".damaged"));
}

TEST_F(NativePreferencesDamage, WhoeverIsToldMayReadAndWritePreferencesMeanwhile) {
    std::string damaged = healthyFile();
    std::unique_ptr<SQLitePreferences> store;
    store = std::make_unique<SQLitePreferences>(path, [&](std::string_view line) {
        lines.emplace_back(line);
        store->setString("told", "yes");
        EXPECT_EQ(store->string("told"), "yes");
    });
    EXPECT_EQ(store->string("key1"), std::string(100, 'v'));
    damaged.replace(4096, damaged.size() - 4096, std::string(damaged.size() - 4096, '\xFF'));
    overwrite(damaged);
    static_cast<void>(sql("PRAGMA user_version = 7"));

    for (int i = 0; i < 300; ++i) {
        static_cast<void>(store->string("key" + std::to_string(i)));
    }

    EXPECT_EQ(lines.size(), 1U);
    EXPECT_EQ(store->string("told"), "yes");
}

TEST_F(NativePreferencesDamage, BytesChangedAtRandomNeverStopTheStoreFromWorking) {
    const std::string whole = healthyFile();
    std::mt19937 random(20240517);
    int putAside = 0;
    for (int round = 0; round < 40; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 40; ++i) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        for (const auto& entry : std::filesystem::directory_iterator(scratch.path())) {
            std::filesystem::remove(entry.path());
        }
        overwrite(damaged);
        lines.clear();

        {
            const auto store = open();
            for (int i = 0; i < 300; i += 50) {
                static_cast<void>(store->string("key" + std::to_string(i)));
            }
            store->setString("new", "value");
            EXPECT_EQ(store->string("new"), "value");
        }

        EXPECT_EQ(open()->string("new"), "value");
        EXPECT_LE(lines.size(), 1U);
        putAside += std::filesystem::exists(path + ".damaged") ? 1 : 0;
    }
    EXPECT_GT(putAside, 4);
}

} // namespace
} // namespace quorvane::platform::native
