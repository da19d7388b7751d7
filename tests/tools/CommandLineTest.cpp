#include <tuple>

#include "tools/ProgramTest.h"
#include "tools/commands/CommandLine.h"

namespace quorvane::tool {
namespace {

/// What is typed, and what the one sentence on standard error is.
using WrongLine = std::tuple<Arguments, std::string>;

class WrongCommandLine : public ProgramTest, public ::testing::WithParamInterface<WrongLine> {};

TEST_P(WrongCommandLine, EndsWithTwoAndOneSentenceOnStandardErrorOnly) {
    const auto& [arguments, sentence] = GetParam();

    const Ended ended = runPlain(arguments);

    EXPECT_EQ(ended.exitStatus, 2);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
}

const std::string metres = " takes a whole number of metres from 0 to 2147483647, not ";

INSTANTIATE_TEST_SUITE_P(
    Forms, WrongCommandLine,
    ::testing::Values(
        WrongLine{Arguments{},
                  "name one of the commands sign-in, search, tasks, places, rewards, device, replay, scan, photo, "
                  "track and demo; "
                  "--help explains them"},
        WrongLine{{"--json"},
                  "name one of the commands sign-in, search, tasks, places, rewards, device, replay, scan, photo, "
                  "track and demo; "
                  "--help explains them"},
        WrongLine{{"fly"}, "the following argument was not expected: fly"},
        WrongLine{{"sign-in", "device"}, "the following argument was not expected: device"},
        WrongLine{{"sign-in", "--user", "u"}, "the following arguments were not expected: u --user"},
        WrongLine{{"search"}, "name what to search for: places or tasks"},
        WrongLine{{"search", "--json"}, "name what to search for: places or tasks"},
        WrongLine{{"search", "geofences"}, "the following argument was not expected: geofences"},
        WrongLine{{"search", "places", "--near", "a,b"},
                  "--near takes LAT,LNG in degrees, such as 52.0931,5.6642, not \"a,b\""},
        WrongLine{{"search", "places", "--near", "91,0"},
                  "--near takes a latitude from -90 to 90 and a longitude from -180 to 180, not \"91,0\""},
        WrongLine{{"search", "tasks", "--near", "nan,0"},
                  "--near takes LAT,LNG in degrees, such as 52.0931,5.6642, not \"nan,0\""},
        WrongLine{{"search", "places", "--near"}, "--near needs a value"},
        WrongLine{{"search", "places", "--near", "1,2", "--near", "1,2"}, "--near may be given once only"},
        WrongLine{{"search", "places", "--radius", "-5"}, "--radius" + metres + "\"-5\""},
        WrongLine{{"search", "tasks", "--exclude", "-5"}, "--exclude" + metres + "\"-5\""},
        WrongLine{{"search", "places", "--exclude", "5"}, "the following arguments were not expected: 5 --exclude"},
        WrongLine{{"search", "tasks", "--campaign", ""}, "--campaign takes a text that is not empty"},
        WrongLine{{"search", "tasks", "--near", "1,2", "--place", "p"}, "--near and --place do not go together"},
        WrongLine{{"search", "tasks", "--campaign", "c", "--place", "p"}, "--campaign and --place do not go together"},
        WrongLine{{"track", "--options", "fly"},
                  "--options takes continuous, responsive, efficient or the name of a .json file, not \"fly\""},
        WrongLine{{"track", "--nmea", ""}, "--nmea takes a text that is not empty"},
        WrongLine{{"track", "--nmea", "a", "--socket", "h:1"}, "--nmea and --socket do not go together"},
        WrongLine{{"track", "--nmea", "a", "--serial", "b"}, "--nmea and --serial do not go together"},
        WrongLine{{"track", "--socket", "nowhere"}, "--socket takes HOST:PORT, not \"nowhere\""},
        WrongLine{{"track", "--socket", ":1"}, "--socket takes HOST:PORT, not \":1\""},
        WrongLine{{"track", "--socket", "h:0"}, "--socket takes a port from 1 to 65535, not \"0\""},
        WrongLine{{"track", "--baud", "9600"}, "--baud requires --serial"},
        WrongLine{{"track", "--serial", "s", "--baud", "fast"}, "--baud takes a whole number from 1 on, not \"fast\""},
        WrongLine{{"tasks"}, "name what to do with a task: claim, requirements, questions, next, check or answer"},
        WrongLine{{"tasks", "claim"}, "--task is required"},
        WrongLine{{"tasks", "claim", "--task", ""}, "--task takes a text that is not empty"},
        WrongLine{{"tasks", "claim", "--task"}, "--task needs a value"},
        WrongLine{{"tasks", "claim", "--task", "f", "--at", "here"},
                  "--at takes LAT,LNG in degrees, such as 52.0931,5.6642, not \"here\""},
        WrongLine{{"tasks", "claim", "--task", "f", "--number", "0"},
                  "--number takes a whole number from 1 on, not \"0\""},
        WrongLine{{"tasks", "claim", "--task", "f", "--number", "first"},
                  "--number takes a whole number from 1 on, not \"first\""},
        WrongLine{{"tasks", "questions", "--task", "f", "--at", "1,2"},
                  "the following arguments were not expected: 1,2 --at"},
        WrongLine{{"tasks", "next", "--task", "f"}, "--question is required"},
        WrongLine{{"tasks", "next", "--task", "f", "--question", ""}, "--question takes a text that is not empty"},
        WrongLine{{"tasks", "check", "--task", "f", "--question", "q", "--answers", "a,,b"},
                  "--answers takes keys with commas between them, such as a1,a2, not \"a,,b\""},
        WrongLine{{"tasks", "answer", "--task", "f", "--question", "q", "--answers", ""},
                  "--answers takes keys with commas between them, such as a1,a2, not \"\""},
        WrongLine{{"tasks", "answer", "--task", "f", "--question", "q", "--photo", ""},
                  "--photo takes a text that is not empty"},
        WrongLine{{"tasks", "give-up"}, "the following argument was not expected: give-up"},
        WrongLine{{"places"}, "name what to do with places: add"}, WrongLine{{"places", "add"}, "FILE is required"},
        WrongLine{{"places", "add", "f"}, "--near is required"},
        WrongLine{{"places", "add", "f", "--near", "1"},
                  "--near takes LAT,LNG in degrees, such as 52.0931,5.6642, not \"1\""},
        WrongLine{{"places", "add", "f", "--near", "1,2", "--radius", "x"}, "--radius" + metres + "\"x\""},
        WrongLine{{"places", "add", "f", "g", "--near", "1,2"}, "the following argument was not expected: g"},
        WrongLine{{"rewards", "list"}, "the following argument was not expected: list"},
        WrongLine{{"--log-level", "loud", "device"},
                  "--log-level takes none, error, warning, info or debug, not \"loud\""},
        WrongLine{{"device", "--data-port", "65536"}, "--data-port takes a port from 1 to 65535, not \"65536\""},
        WrongLine{{"--identity-port", "0", "device"}, "--identity-port takes a port from 1 to 65535, not \"0\""},
        WrongLine{{"--home", "", "device"}, "--home takes a text that is not empty"},
        WrongLine{{"--key", "A", "device", "--key", "B"}, "--key may be given once only"},
        WrongLine{{"demo", "--track", ""}, "--track takes a text that is not empty"},
        WrongLine{{"demo", "--key", "UVZSRUFM-k"},
                  "the demo speaks to its own local service only; its --key cannot begin with UVZSRUFM-"},
        WrongLine{{"demo", "--key", "UVZGQUtF-k"},
                  "the demo speaks to its own local service only; its --key cannot begin with UVZGQUtF-"}));

class CommandLineTest : public ProgramTest {};

TEST_F(CommandLineTest, HelpGoesToStandardOutput) {
    for (const Arguments& arguments :
         {Arguments{"--help"}, {"search", "tasks", "--help"}, {"demo", "-h"}, {"--version"}}) {
        const Ended ended = runPlain(arguments);

        EXPECT_EQ(ended.exitStatus, 0);
        EXPECT_EQ(ended.errors, "");
        EXPECT_FALSE(ended.output.empty());
        EXPECT_TRUE(ended.output.ends_with("\n"));
    }
}

TEST_F(CommandLineTest, TheHelpOfACommandNamesItsOptions) {
    EXPECT_NE(runPlain({"search", "tasks", "--help"}).output.find("--exclude METRES"), std::string::npos);
    EXPECT_NE(runPlain({"--help"}).output.find("--identity-port PORT"), std::string::npos);
}

TEST_F(CommandLineTest, GlobalOptionsMayStandBeforeTheCommandAndAfterIt) {
    const std::string place = home.string();
    for (const Arguments& arguments : {Arguments{"--json", "--home", place, "device"},
                                       {"device", "--json", "--home", place},
                                       {"--home", place, "device", "--json"}}) {
        const Ended ended = runPlain(arguments);

        EXPECT_EQ(ended.exitStatus, 0);
        EXPECT_EQ(textIn(ended.document(), "home"), place);
    }
}

TEST_F(CommandLineTest, ACoordinateMayBeginWithAMinus) {
    const auto parsed = [](const char* near) {
        const char* const words[] = {"quorvane", "search", "places", "--near", near};
        return std::holds_alternative<CommandLine>(parseCommandLine(5, words));
    };

    EXPECT_TRUE(parsed("-33.9,18.4"));
    EXPECT_TRUE(parsed("-.5,-0.5"));
}

TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsNoSuccess) {
    const Ended ended = finish(start({"--version"}, {.output = "/dev/full", .errors = {}, .input = {}}));

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_TRUE(ended.errors.starts_with("quorvane: standard output cannot be written: ")) << ended.errors;
}

} // namespace
} // namespace quorvane::tool
