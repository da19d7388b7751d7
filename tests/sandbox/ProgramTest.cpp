#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "sandbox/Program.h"
#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

/// The sandbox's program with these arguments.
std::vector<std::string> command(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), QUORVANE_SANDBOX_PROGRAM);
    return arguments;
}

struct Ports {
    int data = 0;
    int identity = 0;
};

Ports portsOf(const std::string& line) {
    Ports ports;
    EXPECT_EQ(std::sscanf(line.c_str(), "data http://127.0.0.1:%d identity http://127.0.0.1:%d", &ports.data,
                          &ports.identity),
              2)
        << line;
    return ports;
}

/// Runs the program to its end.
void expectEnd(const std::vector<std::string>& arguments, int status, const ::testing::Matcher<std::string>& errors) {
    Program program(command(arguments));
    EXPECT_EQ(program.restOfOutput(), "");
    const std::string told = program.restOfErrors();
    EXPECT_THAT(told, errors);
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
    EXPECT_EQ(program.wait(), status);
}

const std::vector<std::string> freePorts{"--data-port", "0", "--identity-port", "0"};

std::vector<std::string> withFreePorts(const std::vector<std::string>& more) {
    std::vector<std::string> all = freePorts;
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

TEST(Program, TellsWhereItsServicesAreAndLogsEachRequest) {
    Program program(command(freePorts));
    const Ports ports = portsOf(program.readOutputLine());

    EXPECT_EQ(ask(ports.data, "GET /config?a=b HTTP/1.1\r\n\r\n").status(), 401);
    EXPECT_EQ(ask(ports.identity, "GET /authorize HTTP/1.1\r\n\r\n").status(), 400);

    EXPECT_THAT(program.readErrorLine(), MatchesRegex("data GET /config\\?a=b 401 [0-9]+ bytes [0-9]+ ms"));
    EXPECT_THAT(program.readErrorLine(), MatchesRegex("identity GET /authorize 400 [0-9]+ bytes [0-9]+ ms"));
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(program.restOfOutput(), "");
    EXPECT_FALSE(isListening(ports.data));
    EXPECT_FALSE(isListening(ports.identity));
}

TEST(Program, EndsCleanlyWhenItIsInterrupted) {
    Program program(command(withFreePorts({"--quiet", "--fault", "*:delay=3600s"})));
    const Ports ports = portsOf(program.readOutputLine());
    RawConnection waiting(ports.data);
    waiting.send("GET /config HTTP/1.1\r\n\r\n");

    program.signal(SIGINT);

    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(program.restOfErrors(), "");
}

TEST(Program, SaysNothingOfRequestsWhenItIsQuiet) {
    Program program(command(withFreePorts({"--quiet"})));
    const Ports ports = portsOf(program.readOutputLine());
    EXPECT_EQ(ask(ports.data, "GET /config HTTP/1.1\r\n\r\n").status(), 401);
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(program.restOfErrors(), "");
}

TEST(Program, ATakenPortEndsItWithOneSentence) {
    Program first(command(freePorts));
    const Ports ports = portsOf(first.readOutputLine());
    const std::string data = std::to_string(ports.data);
    const std::string identity = std::to_string(ports.identity);

    expectEnd({"--data-port", data, "--identity-port", "0"}, 1,
              "Port " + data + " of this machine is already taken by another program.\n");
    expectEnd({"--data-port", "0", "--identity-port", identity}, 1,
              "Port " + identity + " of this machine is already taken by another program.\n");
    EXPECT_EQ(ask(ports.data, "GET /nowhere HTTP/1.1\r\n\r\n").status(), 404);
}

TEST(Program, APortIsFreeAgainAtOnce) {
    Ports ports;
    {
        Program program(command(freePorts));
        ports = portsOf(program.readOutputLine());
        EXPECT_EQ(ask(ports.data, "GET /nowhere HTTP/1.1\r\nConnection: close\r\n\r\n").status(), 404);
        program.signal(SIGTERM);
        EXPECT_EQ(program.wait(), 0);
    }
    Program again(
        command({"--data-port", std::to_string(ports.data), "--identity-port", std::to_string(ports.identity)}));
    EXPECT_EQ(portsOf(again.readOutputLine()).data, ports.data);
}

TEST(Program, AWrongFormEndsItWithStatusTwo) {
    expectEnd({"--bogus"}, 2, HasSubstr("--bogus"));
    expectEnd({"extra"}, 2, HasSubstr("extra"));
    expectEnd({"--data-port"}, 2, HasSubstr("--data-port"));
    expectEnd({"--data-port", "65536"}, 2, HasSubstr("65536"));
    expectEnd({"--data-port", "x"}, 2, HasSubstr("--data-port"));
    expectEnd({"--token-lifetime", "0"}, 2, HasSubstr("--token-lifetime"));
    expectEnd({"--seed", "-1"}, 2, HasSubstr("--seed"));
    expectEnd({"--around", "91,14"}, 2, HasSubstr("91,14"));
    expectEnd({"--fault", "/config:explode"}, 2,
              "The fault \"/config:explode\" cannot be read: \"explode\" is no part of a fault.\n");
}

TEST(Program, AnyNumberOf64BitsIsASeedAndNoOther) {
    for (const std::string text : {"-1", "", "18446744073709551616", "1.5", "7x"}) {
        expectEnd({"--seed", text}, 2, "--seed: \"" + text + "\" is no whole number from 0 to 18446744073709551615.\n");
    }
    Program program(command(withFreePorts({"--seed", "18446744073709551615"})));
    EXPECT_GT(portsOf(program.readOutputLine()).data, 0);
}

TEST(Program, OnePortForBothServicesIsAWrongForm) {
    expectEnd({"--data-port", "45678", "--identity-port", "45678"}, 2,
              "--data-port and --identity-port: one port, 45678, cannot serve both.\n");
    expectEnd({"--data-port", "4001"}, 2, HasSubstr("4001"));
}

TEST(Program, AnEmptyTextIsAWrongForm) {
    expectEnd(withFreePorts({"--database", ""}), 2, "--database: an empty text names no file.\n");
    expectEnd(withFreePorts({"--around", ""}), 2, "--around: an empty text is neither LAT,LNG nor a track.\n");
}

TEST(Program, APointThatWasTypedWrongIsNotTakenForAFile) {
    for (const std::string text : {"46.05,x", "1,2,3", "46.05,"}) {
        expectEnd(withFreePorts({"--around", text}), 2,
                  "--around: \"" + text + "\" is no point LAT,LNG, such as 46.05,14.51.\n");
    }
}

TEST(Program, AFileThatCannotBeReadEndsItWithStatusOne) {
    expectEnd({"--around", "/nowhere/track.gpx"}, 1, HasSubstr("/nowhere/track.gpx"));
    expectEnd(withFreePorts({"--database", "/nowhere/store"}), 1, HasSubstr("/nowhere/store"));
}

TEST(Program, HelpIsNoFailure) {
    Program program(command({"--help"}));
    const std::string help = program.restOfOutput();
    EXPECT_EQ(program.wait(), 0);
    for (const char* option : {"--data-port", "--identity-port", "--database", "--seed", "--around", "--token-lifetime",
                               "--fault", "--quiet"}) {
        EXPECT_THAT(help, HasSubstr(option));
    }
}

class ProgramData : public SandboxTest {
protected:
    void SetUp() override {}

    /// What a search finds in the program that these arguments start.
    static std::string search(const std::vector<std::string>& arguments, const std::string& query) {
        Program program(command(withFreePorts(arguments)));
        const Ports ports = portsOf(program.readOutputLine());
        const std::string code =
            field(ask(ports.identity, "GET /authorize?" + authorizeQuery() + " HTTP/1.1\r\n\r\n"), "code");
        const RawReply granted = ask(ports.identity, tokenRequest(codeBody(code)));
        const RawReply found = ask(ports.data, "GET /locations/find?" + query + " HTTP/1.1\r\nAuthorization: Bearer " +
                                                   field(granted, "access_token") + "\r\n\r\n");
        EXPECT_EQ(found.status(), 200) << found.bytes;
        return found.body();
    }
};

TEST_F(ProgramData, TheSeedDecidesWhatIsFound) {
    const std::string query = "lat=46.05&lng=14.5&rad=4000";
    const std::string found = search({"--seed", "5"}, query);
    EXPECT_THAT(found, StartsWith(R"({"count":60,)"));
    EXPECT_EQ(search({"--seed", "5"}, query), found);
    EXPECT_NE(search({"--seed", "6"}, query), found);
}

TEST_F(ProgramData, PlacesAreAroundThePointOrTrackThatWasGiven) {
    EXPECT_THAT(search({"--around", "-33.5,151.25"}, "lat=-33.5&lng=151.25&rad=4000"), StartsWith(R"({"count":60,)"));

    const auto track = std::filesystem::temp_directory_path() / ("track-" + std::to_string(::getpid()) + ".gpx");
    std::ofstream(track) << R"(<gpx version="1.1" creator="test"><trk><trkseg>)"
                         << R"(<trkpt lat="12.5" lon="-70.1"/><trkpt lat="12.6" lon="-70.1"/></trkseg></trk></gpx>)";
    const std::string found = search({"--around", track.string()}, "lat=12.6&lng=-70.1&rad=700");
    std::filesystem::remove(track);
    EXPECT_THAT(found, StartsWith(R"({"count":)"));
    EXPECT_THAT(found, ::testing::Not(StartsWith(R"({"count":0,)")));
}

TEST_F(ProgramData, ClaimsThatAreThrownAwayAreALineOfTheirOwnEvenWhereItIsQuiet) {
    const auto file = std::filesystem::temp_directory_path() / ("claims-" + std::to_string(::getpid()));
    startWith({.database = file.string(), .seed = 5});
    const std::string token = "\r\nAuthorization: Bearer " + signIn().access;
    EXPECT_EQ(
        ask(sandbox->dataPort(), "GET /generate/tasks?lat=46.05&lng=14.5&rad=1 HTTP/1.1" + token + "\r\n\r\n").status(),
        200);
    const RawReply claimed = ask(sandbox->dataPort(), "POST /tasks HTTP/1.1\r\nContent-Type: application/json" + token +
                                                          "\r\nContent-Length: 20\r\n\r\n" + R"({"key":"task-00000"})");
    EXPECT_EQ(claimed.status(), 200) << claimed.bytes;
    sandbox.reset();

    Program program(command(withFreePorts({"--quiet", "--seed", "6", "--database", file.string()})));

    EXPECT_GT(portsOf(program.readOutputLine()).data, 0);
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    std::filesystem::remove(file);
    EXPECT_EQ(
        program.restOfErrors(),
        "Other places and tasks are made than the database holds: 1 claim, 0 answers and 0 photos are thrown away "
        "with those.\n");
}

TEST_F(ProgramData, TheTokenLifetimeIsTold) {
    Program program(command(withFreePorts({"--token-lifetime", "5"})));
    const Ports ports = portsOf(program.readOutputLine());
    const std::string code =
        field(ask(ports.identity, "GET /authorize?" + authorizeQuery() + " HTTP/1.1\r\n\r\n"), "code");
    EXPECT_EQ(field(ask(ports.identity, tokenRequest(codeBody(code))), "expires_in"), "5");
}

TEST_F(ProgramData, FaultsOfTheCommandLineHappen) {
    Program program(
        command(withFreePorts({"--fault", "/config:status=503:count=1", "--fault", "/authorize:drop:count=1"})));
    const Ports ports = portsOf(program.readOutputLine());
    EXPECT_EQ(ask(ports.data, "GET /config HTTP/1.1\r\n\r\n").status(), 503);
    EXPECT_EQ(ask(ports.data, "GET /config HTTP/1.1\r\n\r\n").status(), 401);
    EXPECT_EQ(ask(ports.identity, "GET /authorize HTTP/1.1\r\n\r\n").bytes, "");
    EXPECT_THAT(program.readErrorLine(), EndsWith("(status=503)"));
}

} // namespace
} // namespace quorvane::sandbox::test
