#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Application.h"
#include "Platform/Clock.h"
#include "Platform/Device.h"
#include "Platform/FileManager.h"
#include "Platform/HTTPTransport.h"
#include "Platform/Native/Home.h"
#include "Platform/Native/HostApplication.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform {
namespace {

class NativePlatformTest : public ::testing::Test {
protected:
    std::shared_ptr<NativePlatform> launch(const std::string& home) {
        NativeOptions options;
        options.home = home;
        options.output = [this](std::string_view line) { lines.emplace_back(line); };
        return NativePlatform::make(std::move(options));
    }

    const testing::ScratchDirectory scratch;
    std::vector<std::string> lines;
};

TEST_F(NativePlatformTest, AHomeIsMadeForItsOwnerOnly) {
    const auto native = launch(scratch.path() + "/a/b/");

    EXPECT_EQ(native->home(), scratch.path() + "/a/b");
    for (const char* directory : {"/a", "/a/b"}) {
        struct stat status {};
        ASSERT_EQ(stat((scratch.path() + directory).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0700U);
    }
    EXPECT_TRUE(lines.empty());
}

TEST_F(NativePlatformTest, EverythingOfAHomeIsForItsOwnerOnly) {
    const mode_t before = umask(0);
    const auto native = launch(scratch.path() + "/home");
    native->preferences().setString("k", "v");
    static_cast<void>(native->device().identifierForVendor());
    EXPECT_FALSE(native->files().createDirectory(native->files().cachesDirectory()));
    EXPECT_FALSE(native->files().replace(native->files().cachesDirectory() + "/file", "content"));
    umask(before);

    int entries = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scratch.path() + "/home")) {
        const auto others = std::filesystem::perms::group_all | std::filesystem::perms::others_all;
        EXPECT_EQ(entry.status().permissions() & others, std::filesystem::perms::none) << entry.path();
        ++entries;
    }
    EXPECT_EQ(entries, 8);
}

TEST_F(NativePlatformTest, AHomeThatCannotBeUsedMeansMemoryAndOneLine) {
    std::ofstream(scratch.path() + "/file") << "in the way";

    const auto native = launch(scratch.path() + "/file/home");
    native->preferences().setString("k", "v");
    native->preferences().synchronize();

    EXPECT_EQ(native->preferences().string("k"), "v");
    EXPECT_TRUE(native->device().identifierForVendor().has_value());
    EXPECT_TRUE(native->files().createDirectory(native->files().cachesDirectory()));
    EXPECT_TRUE(native->files().replace(native->files().cachesDirectory() + "/file", "content"));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find(scratch.path() + "/file/home"), std::string::npos) << lines[0];

    AnyCodable deep;
    for (int i = 0; i < 513; ++i) {
        deep = AnyCodable::List{std::move(deep)};
    }
    native->preferences().setDictionary("deep", {{"deep", deep}});
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[1].find("deep is not stored"), std::string::npos) << lines[1];
}

TEST_F(NativePlatformTest, TwoPlatformsMayShareAHome) {
    const auto one = launch(scratch.path());
    const auto two = launch(scratch.path());

    one->preferences().setString("k", "v");

    EXPECT_EQ(two->preferences().string("k"), "v");
    EXPECT_EQ(one->device().identifierForVendor(), two->device().identifierForVendor());
}

TEST_F(NativePlatformTest, ADerivedPlatformMayReplaceAPart) {
    class Overlaid : public NativePlatform {
    public:
        using NativePlatform::NativePlatform;
        Clock& clock() override { return stopped; }

    private:
        struct Stopped : Clock {
            [[nodiscard]] Date now() const override { return {}; }
            [[nodiscard]] std::chrono::nanoseconds monotonic() const override { return {}; }
            [[nodiscard]] std::chrono::seconds offsetFromUTC(Date) const override { return {}; }
        } stopped;
    };
    NativeOptions options;
    options.home = scratch.path();
    Overlaid overlaid(std::move(options));

    EXPECT_EQ(static_cast<Platform&>(overlaid).clock().now(), Date());
}

TEST_F(NativePlatformTest, APlatformMayEndWhileARequestIsInFlight) {
    auto native = launch(scratch.path());
    int completions = 0;
    native->transport().send({.url = "http://127.0.0.1:1/"}, [&](const HTTPTransport::Result&) { ++completions; });

    native.reset();

    EXPECT_EQ(completions, 0);
}

TEST_F(NativePlatformTest, WorkThatStillWaitsIsDroppedWhileThePartsAreThere) {
    struct UsesPartsAtItsEnd {
        ~UsesPartsAtItsEnd() {
            platform.mainQueue().post([] {});
            platform.preferences().setString("ended", "properly");
        }
        Platform& platform;
    };
    auto native = launch(scratch.path());
    native->mainQueue().post([held = std::shared_ptr<UsesPartsAtItsEnd>(new UsesPartsAtItsEnd{*native})] {});

    native.reset();

    EXPECT_EQ(launch(scratch.path())->preferences().string("ended"), "properly");
}

/// The process's environment, put back at the end.
class NativeHome : public ::testing::Test {
protected:
    static void set(const char* name, const char* value) {
        if (value == nullptr) {
            unsetenv(name);
        } else {
            setenv(name, value, 1);
        }
    }
    ~NativeHome() override {
        set("HOME", hadUser ? user.c_str() : nullptr);
        set("XDG_DATA_HOME", hadData ? data.c_str() : nullptr);
    }

    const bool hadUser = std::getenv("HOME") != nullptr;
    const bool hadData = std::getenv("XDG_DATA_HOME") != nullptr;
    const std::string user = hadUser ? std::getenv("HOME") : "";
    const std::string data = hadData ? std::getenv("XDG_DATA_HOME") : "";
};

TEST_F(NativeHome, StandsWhereTheUsersDataStands) {
    set("XDG_DATA_HOME", "/data");
    set("HOME", "/home/rider");
    EXPECT_EQ(native::homeDirectory(""), "/data/quorvane");

    set("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(native::homeDirectory(""), "/home/rider/.local/share/quorvane");

    set("XDG_DATA_HOME", "relative");
    EXPECT_EQ(native::homeDirectory(""), "/home/rider/.local/share/quorvane");

    set("HOME", nullptr);
    EXPECT_EQ(native::homeDirectory(""), "");
}

TEST_F(NativeHome, AGivenOneBecomesAbsolute) {
    EXPECT_EQ(native::homeDirectory("/given/"), "/given");
    EXPECT_EQ(native::homeDirectory("given"), std::filesystem::current_path().string() + "/given");
}

TEST_F(NativeHome, NoneAtAllMeansMemoryAndOneLine) {
    set("XDG_DATA_HOME", nullptr);
    set("HOME", nullptr);
    std::vector<std::string> lines;
    NativeOptions options;
    options.output = [&](std::string_view line) { lines.emplace_back(line); };

    const auto native = NativePlatform::make(std::move(options));
    native->preferences().setInteger("k", 1);

    EXPECT_EQ(native->preferences().integer("k"), 1);
    EXPECT_TRUE(native->device().identifierForVendor().has_value());
    EXPECT_TRUE(native->files().createDirectory(native->files().cachesDirectory()));
    EXPECT_EQ(lines.size(), 1U);
}

TEST(NativeOutput, GoesToStandardOutputAfterWhatTheProgramPrinted) {
    ::testing::internal::CaptureStdout();
    native::HostApplication application({}, nullptr);

    static_cast<void>(std::printf("printed by the program, "));
    application.standardOutput("a line");
    static_cast<void>(std::printf("printed again\n"));
    application.standardOutput("");

    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "printed by the program, a line\nprinted again\n\n");
}

TEST(NativeOutput, AnOutputThatThrowsIsNoFailureOfTheLibrary) {
    native::HostApplication application({}, [](std::string_view) { throw std::runtime_error("full"); });
    native::HostApplication another({}, [](std::string_view) { throw 42; });

    EXPECT_NO_THROW(application.standardOutput("a line"));
    EXPECT_NO_THROW(another.standardOutput("a line"));
}

TEST(NativeOutput, AnOutputMayPrintItself) {
    std::vector<std::string> lines;
    native::HostApplication* itself = nullptr;
    native::HostApplication application({}, [&](std::string_view line) {
        lines.emplace_back(line);
        if (lines.size() == 1) {
            itself->standardOutput("about it");
        }
    });
    itself = &application;

    application.standardOutput("a line");

    EXPECT_EQ(lines, (std::vector<std::string>{"a line", "about it"}));
}

TEST(NativeClock, FollowsTheTimeZoneOfTheProcess) {
    const testing::ScratchDirectory scratch;
    const auto native = NativePlatform::make({.home = scratch.path()});
    const Date january = Date(std::chrono::sys_days(std::chrono::year(2024) / 1 / 15));
    const Date july = Date(std::chrono::sys_days(std::chrono::year(2024) / 7 / 15));
    const char* before = std::getenv("TZ");
    const std::string zone = before == nullptr ? "" : before;

    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    EXPECT_EQ(native->clock().offsetFromUTC(january), std::chrono::hours(1));
    EXPECT_EQ(native->clock().offsetFromUTC(july), std::chrono::hours(2));
    setenv("TZ", "NST3:30", 1);
    EXPECT_EQ(native->clock().offsetFromUTC(january), -std::chrono::minutes(210));
    setenv("TZ", "UTC0", 1);
    EXPECT_EQ(native->clock().offsetFromUTC(july), std::chrono::seconds(0));

    if (before == nullptr) {
        unsetenv("TZ");
    } else {
        setenv("TZ", zone.c_str(), 1);
    }
}

} // namespace
} // namespace quorvane::platform
