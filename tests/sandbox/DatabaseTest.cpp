#include <filesystem>
#include <fstream>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include "sandbox/Database.h"
#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;

class DatabaseTest : public TaskTest {
protected:
    DatabaseTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quorvane-sandbox-XXXXXX").string();
        folder = ::mkdtemp(name.data());
        file = (folder / "store").string();
    }

    ~DatabaseTest() override {
        sandbox.reset();
        std::filesystem::remove_all(folder);
    }

    void SetUp() override {}

    /// Why no sandbox starts on the file; empty when one does.
    [[nodiscard]] std::string problem(const std::string& path) const {
        auto started = Sandbox::start({.database = path});
        auto* sentence = std::get_if<std::string>(&started);
        return sentence == nullptr ? "" : *sentence;
    }

    std::filesystem::path folder;
    std::string file;
};

TEST_F(DatabaseTest, TokensOutliveARestart) {
    startWith({.database = file});
    const Tokens tokens = signIn();

    sandbox.reset();
    startWith({.database = file});

    EXPECT_EQ(get(configTarget, tokens.access).status(), 200);
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);
}

TEST_F(DatabaseTest, PlacesFollowTheSeedOfTheLastStart) {
    const auto search = [&] { return get("/locations/find?lat=46.05&lng=14.5&rad=4000", signIn().access).body(); };
    startWith({.database = file, .seed = 5});
    const std::string first = search();
    sandbox.reset();
    startWith({.database = file, .seed = 6});
    const std::string second = search();
    sandbox.reset();
    startWith({.seed = 5});

    EXPECT_NE(first, second);
    EXPECT_EQ(search(), first);
}

TEST_F(DatabaseTest, AStartThatFailsForATakenPortThrowsNothingAway) {
    startWith({.database = file, .seed = 5});
    claimTour();
    ASSERT_EQ(respond(pick(0, {0})).status(), 200);
    sandbox.reset();
    const auto other = std::get<0>(Sandbox::start());

    for (const auto& [data, identity] : {std::pair(other->dataPort(), 0), {0, other->identityPort()}}) {
        std::vector<std::string> notices;
        const auto failed =
            Sandbox::start({.dataPort = data,
                            .identityPort = identity,
                            .database = file,
                            .seed = 6,
                            .onNotice = [&](const std::string& sentence) { notices.push_back(sentence); }});
        EXPECT_TRUE(std::holds_alternative<std::string>(failed));
        EXPECT_THAT(notices, ::testing::IsEmpty());
    }

    startWith({.database = file, .seed = 5});
    EXPECT_EQ(found().state, QVTask::State::running);
    EXPECT_EQ(found().nextQuestion, "task-00000-q3");
}

TEST_F(DatabaseTest, WhatUsersDidIsThrownAwayWithTheirTasksAndOneSentenceSaysSo) {
    std::vector<std::string> notices;
    const auto restart = [&](std::uint64_t seed, const std::vector<platform::Coordinate>& around = {}) {
        sandbox.reset();
        startWith({.database = file, .seed = seed, .around = around, .onNotice = [&](const std::string& sentence) {
                       notices.push_back(sentence);
                   }});
    };
    restart(5);
    restart(6);
    EXPECT_THAT(notices, ::testing::IsEmpty()) << "nobody did anything";
    claimTour();
    QVTaskResponse withPhoto = pick(0, {0});
    withPhoto.base64 = photograph(jpeg).base64;
    ASSERT_EQ(respond(withPhoto).status(), 200);
    ASSERT_EQ(respond(pick(2, {0, 1})).status(), 200);
    restart(6);
    EXPECT_THAT(notices, ::testing::IsEmpty()) << "nothing changed";

    restart(7);
    EXPECT_EQ(found().state, QVTask::State::generated);
    claimTour();
    restart(7, {{46.0501, 14.5}});

    EXPECT_THAT(notices, ::testing::ElementsAre("Other places and tasks are made than the database holds: 1 claim, "
                                                "2 answers and 1 photo are thrown away with those.",
                                                "Other places and tasks are made than the database holds: 1 claim, "
                                                "0 answers and 0 photos are thrown away with those."));
}

TEST_F(DatabaseTest, TheFilesAreTheirOwnersOnly) {
    const auto before = ::umask(0);
    startWith({.database = file});
    std::ignore = signIn();
    ::umask(before);

    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        struct stat status {};
        ASSERT_EQ(::stat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << entry.path();
        ++files;
    }
    EXPECT_GE(files, 1);
}

TEST_F(DatabaseTest, NothingButTheFileIsLeft) {
    startWith({.database = file});
    std::ignore = signIn();

    sandbox.reset();

    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().string());
    }
    EXPECT_THAT(names, ::testing::ElementsAre(file));
}

TEST_F(DatabaseTest, AFileThatIsNoDatabaseIsLeftAlone) {
    std::ofstream(file) << std::string(5000, 'x');
    EXPECT_THAT(problem(file), AllOf(HasSubstr("\"" + file + "\" cannot be used"), EndsWith(".")));
    EXPECT_EQ(std::filesystem::file_size(file), 5000U);
}

TEST_F(DatabaseTest, ADatabaseOfAnotherProgramIsLeftAlone) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "CREATE TABLE theirs (a); PRAGMA user_version=1", nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(other);
    EXPECT_EQ(problem(file), "The database \"" + file + "\" belongs to another program.");
}

TEST_F(DatabaseTest, ADatabaseOfAnotherVersionIsLeftAlone) {
    startWith({.database = file});
    sandbox.reset();
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "PRAGMA user_version=99", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    EXPECT_EQ(problem(file), "The database \"" + file + "\" was written by another version of this program.");
}

TEST_F(DatabaseTest, ADatabaseServesOneSandboxAtATime) {
    startWith({.database = file});
    EXPECT_EQ(problem(file), "The database \"" + file + "\" is in use by another program.");
    sandbox.reset();
    EXPECT_EQ(problem(file), "");
}

TEST_F(DatabaseTest, APlaceWithoutAFileIsSaidInOneSentence) {
    EXPECT_EQ(problem((folder / "none" / "store").string()), "The database \"" + (folder / "none" / "store").string() +
                                                                 "\" cannot be opened: No such file or directory.");
    EXPECT_THAT(problem(folder.string()), EndsWith("cannot be opened: Is a directory."));
    EXPECT_EQ(problem("/dev/null"), "The database \"/dev/null\" is no file.");
}

TEST_F(DatabaseTest, WhatIsNotCommittedIsGone) {
    const auto database = std::get<0>(Database::open(""));
    {
        const Transaction transaction(*database);
        database->execute("INSERT INTO settings VALUES ('a', 'b')");
    }
    {
        Transaction transaction(*database);
        database->execute("INSERT INTO settings VALUES ('c', '')");
        transaction.commit();
    }
    Statement rows = database->prepare("SELECT name, value FROM settings");
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.text(0), "c");
    EXPECT_EQ(rows.text(1), "");
    EXPECT_FALSE(rows.step());
    EXPECT_THROW(database->execute("NONSENSE"), DatabaseError);
    EXPECT_THROW(std::ignore = database->prepare("SELECT nothing FROM nowhere"), DatabaseError);
}

} // namespace
} // namespace quorvane::sandbox::test
