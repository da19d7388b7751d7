#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <unistd.h>

#include "Platform/Native/HostDevice.h"
#include "Platform/Native/OpenSSLDigest.h"
#include "support/ScratchDirectory.h"

namespace {

/// Is told what is brought to the disk, while there is somebody to be told.
std::function<void(const std::string& path)> onSynchronized;

} // namespace

/// Stands in the place of the system's for every library of this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the names there are reserved ones.
extern "C" int fsync(int file) {
    if (onSynchronized) {
        onSynchronized(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)).string());
    }
    return static_cast<int>(syscall(SYS_fsync, file));
}

namespace quorvane::platform::native {
namespace {

class NativeDevice : public ::testing::Test {
protected:
    /// A device whose machine identifier is @p text.
    std::optional<std::string> identifierOn(const std::string& text, const std::string& keptIn = "") {
        std::ofstream(scratch.path() + "/machine-id") << text;
        return HostDevice(keptIn, sources).identifierForVendor();
    }

    const testing::ScratchDirectory scratch;
    const std::string kept = scratch.path() + "/device-id";
    const DeviceSources sources = {{scratch.path() + "/none", scratch.path() + "/machine-id"},
                                   {scratch.path() + "/none", scratch.path() + "/model"}};
    const std::string machine = "3d1219c7c4c5404aaa1f6d2a48adfda4";
};

TEST_F(NativeDevice, TheIdentifierBelongsToTheMachineAndDoesNotShowItsOwn) {
    const std::optional<std::string> identifier = identifierOn(machine + "\n");

    EXPECT_EQ(identifier, identifierOn(machine));
    EXPECT_NE(identifier, identifierOn("3d1219c7c4c5404aaa1f6d2a48adfda5"));
    EXPECT_EQ(identifier, identifierOn("3D1219C7C4C5404AAA1F6D2A48ADFDA4"));
    EXPECT_EQ(identifier->find("3D1219C7"), std::string::npos);
}

TEST_F(NativeDevice, AMachineWithoutAnIdentifierGetsARandomOne) {
    for (const char* text : {"", "uninitialized", "00000000000000000000000000000000", "3d1219c7c4c5404aaa1f6d2a48adfd",
                             "3d1219c7c4c5404aaa1f6d2a48adfdag", "3d1219c7-c4c5-404a-aa1f-6d2a48adfda4"}) {
        EXPECT_NE(identifierOn(text), identifierOn(text)) << text;
    }
    EXPECT_NE(HostDevice("", {{"", ""}, {"", ""}}).identifierForVendor(),
              HostDevice("", {{"", ""}, {"", ""}}).identifierForVendor());
}

TEST_F(NativeDevice, TheFirstIdentifierStaysWhateverBecomesOfTheMachines) {
    const std::optional<std::string> first = identifierOn("", kept);

    EXPECT_EQ(identifierOn(machine, kept), first);
    EXPECT_NE(identifierOn(machine), first);
}

TEST_F(NativeDevice, TheKeptIdentifierIsForItsOwnerOnlyAndTheOnlyFile) {
    static_cast<void>(identifierOn(machine, kept));

    struct stat status {};
    ASSERT_EQ(stat(kept.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(status.st_nlink, 1U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()), {}), 2);
}

TEST_F(NativeDevice, AKeptTextThatIsNoIdentifierIsReplaced) {
    for (const char* text :
         {"", "hello", "3d1219c7-c4c5-404a-aa1f-6d2a48adfda4", "3D1219C7-C4C5-404A-AA1F-6D2A48ADFDA4X"}) {
        std::ofstream(kept) << text;

        const std::optional<std::string> identifier = identifierOn(machine, kept);

        EXPECT_EQ(identifier, identifierOn(machine));
        EXPECT_EQ(identifierOn("", kept), identifier) << text;
    }
}

TEST_F(NativeDevice, TheIdentifierIsKeptBesideWhatAKilledProcessOfTheSameNumberLeft) {
    std::ofstream(kept + "." + std::to_string(getpid())) << "half an identif";

    const std::optional<std::string> identifier = identifierOn("", kept);

    EXPECT_EQ(identifierOn("", kept), identifier);
}

TEST_F(NativeDevice, TheIdentifierIsOnTheDiskBeforeItHasItsNameAndItsNameSoonAfter) {
    std::vector<std::string> synchronized;
    onSynchronized = [&](const std::string& path) {
        const bool isNamed = std::filesystem::exists(kept);
        EXPECT_EQ(isNamed, path == scratch.path()) << path;
        synchronized.push_back(path);
    };

    const std::optional<std::string> identifier = identifierOn(machine, kept);
    onSynchronized = nullptr;

    ASSERT_EQ(synchronized.size(), 2U);
    EXPECT_TRUE(synchronized[0].starts_with(kept + ".")) << synchronized[0];
    EXPECT_EQ(synchronized[1], scratch.path());
    EXPECT_EQ(identifierOn("", kept), identifier);
}

TEST_F(NativeDevice, AnIdentifierThatCannotBeKeptHoldsForTheRun) {
    std::ofstream(scratch.path() + "/machine-id") << "";
    const HostDevice device(scratch.path() + "/none/device-id", sources);

    const std::optional<std::string> identifier = device.identifierForVendor();

    ASSERT_TRUE(identifier.has_value());
    EXPECT_EQ(device.identifierForVendor(), identifier);
}

TEST_F(NativeDevice, TheHardwareIdentifierIsTheDeviceTreesModelOrTheMachineField) {
    utsname names{};
    ASSERT_EQ(uname(&names), 0);
    EXPECT_EQ(HostDevice("", sources).hardwareIdentifier(), names.machine);

    std::ofstream(scratch.path() + "/model") << std::string("Pine64 PinePhone (1.2)\0", 23);
    EXPECT_EQ(HostDevice("", sources).hardwareIdentifier(), "Pine64 PinePhone (1.2)");
}

TEST_F(NativeDevice, TheSystemVersionIsTheKernelsUpToItsFirstDash) {
    utsname names{};
    ASSERT_EQ(uname(&names), 0);

    const std::string version = HostDevice("", sources).systemVersion();

    EXPECT_TRUE(std::string(names.release).starts_with(version));
    EXPECT_EQ(version.find('-'), std::string::npos);
}

TEST_F(NativeDevice, TheKeyedHashAnswersThePublishedValues) {
    // RFC 4231, cases 1 and 2.
    const auto first = hmacSHA256(std::string(20, '\x0b'), "Hi There");
    EXPECT_EQ(uuidText(first.data()), "B0344C61-D8DB-3853-5CA8-AFCEAF0BF12B");
    const auto second = hmacSHA256("Jefe", "what do ya want for nothing?");
    EXPECT_EQ(uuidText(second.data()), "5BDCC146-BF60-754E-6A04-2426089575C7");
}

} // namespace
} // namespace quorvane::platform::native
