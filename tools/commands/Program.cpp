#include "tools/commands/Program.h"

#include <cerrno>
#include <exception>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

#include "JSON/JSON.h"
#include "tools/Failure.h"
#include "tools/Interruption.h"
#include "tools/Terminal.h"
#include "tools/commands/CommandLine.h"

namespace quorvane::tool {
namespace {

enum ExitStatus { succeeded = 0, failed = 1, wrongForm = 2 };

/// The document that stands in the place of a result.
AnyCodable::Dictionary documentOf(const std::optional<QVStatus>& status, const std::string& sentence) {
    AnyCodable::Dictionary document{{"error", sentence}};
    if (status) {
        document["status"] = nameOf(*status);
    }
    return document;
}

} // namespace

int runCommand(const CommandLine& line, Terminal& terminal) {
    AnyCodable::Dictionary document;
    int exitStatus = succeeded;
    const auto fail = [&](const std::optional<QVStatus>& status, const std::string& sentence) {
        terminal.complain((status ? std::string(nameOf(*status)) + ": " : "") + sentence);
        document = documentOf(status, sentence);
        exitStatus = failed;
    };
    terminal.setSilent(line.global.json);
    try {
        document = line.command(line.global, terminal);
        document["status"] = nameOf(QVStatus::SUCCESS);
    } catch (const Interrupted& interrupted) {
        terminal.progress({});
        return interrupted.exitStatus;
    } catch (const NothingFound& nothing) {
        document = documentOf({}, nothing.what());
        exitStatus = failed;
    } catch (const WrongForm&) {
        throw;
    } catch (const Failure& failure) {
        fail(failure.status, failure.what());
    } catch (const std::exception& error) {
        fail({}, error.what());
    }
    terminal.setSilent(false);
    if (line.global.json) {
        terminal.line(json::writeExactly(document));
    }
    return exitStatus;
}

int runProgram(int argumentCount, const char* const* arguments) {
    Terminal terminal;
    int exitStatus = failed;
    try {
        const auto parsed = parseCommandLine(argumentCount, arguments);
        if (const auto* const help = std::get_if<HelpText>(&parsed)) {
            terminal.line(help->text.substr(0, help->text.find_last_not_of('\n') + 1));
            exitStatus = succeeded;
        } else {
            exitStatus = runCommand(std::get<CommandLine>(parsed), terminal);
        }
    } catch (const WrongForm& error) {
        terminal.setSilent(false);
        terminal.complain(error.what());
        return wrongForm;
    } catch (const std::exception& error) {
        terminal.complain(error.what());
        return failed;
    }
    const int error = terminal.flush();
    if (error != 0) {
        // A reader that has seen enough went away on purpose.
        if (error != EPIPE) {
            terminal.complain("standard output cannot be written: " + std::generic_category().message(error));
        }
        return failed;
    }
    return exitStatus;
}

} // namespace quorvane::tool
