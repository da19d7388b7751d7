#include "tools/commands/DeviceInfo.h"

#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "Core/PreferenceKeys.h"
#include "Device/QVUtils.h"
#include "JSON/JSON.h"
#include "Platform/Device.h"
#include "Platform/PreferencesStore.h"
#include "Platform/Qt/KeptServices.h"
#include "testing/DateText.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

/// The key of the tokens and of the application is nobody's business: only that they are there.
AnyCodable lengthOf(const std::optional<std::string>& secret) {
    return secret ? AnyCodable(std::to_string(secret->size()) + " characters") : AnyCodable();
}

/// Everything that the library keeps, by its own keys; what is not there is left out.
AnyCodable::Dictionary storedIn(const platform::PreferencesStore& store) {
    AnyCodable::Dictionary stored;
    const auto add = [&stored](std::string_view key, AnyCodable value) {
        if (value.hasValue()) {
            stored[std::string(key)] = std::move(value);
        }
    };
    for (const std::string_view key :
         {preference::publishableKey, preference::accessKey, preference::accessToken, preference::refreshToken}) {
        add(key, lengthOf(store.string(key)));
    }
    for (const std::string_view key :
         {preference::deviceId, preference::installId, preference::userId, preference::internalUserId,
          preference::userDescription, preference::trackingOptions, preference::config}) {
        const std::optional<std::string> text = store.string(key);
        add(key, text ? AnyCodable(*text) : AnyCodable());
    }
    for (const std::string_view key :
         {preference::logLevel, preference::accessTokenExpiry, preference::accessTokenCreationTime}) {
        const std::optional<std::int64_t> number = store.integer(key);
        add(key, number ? AnyCodable(*number) : AnyCodable());
    }
    for (const std::string_view key :
         {preference::adIdEnabled, preference::backgroundTracking, preference::stopped, preference::canExit}) {
        const std::optional<bool> flag = store.boolean(key);
        add(key, flag ? AnyCodable(*flag) : AnyCodable());
    }
    for (const std::string_view key : {preference::lastSentAt, preference::lastMovedAt}) {
        const std::optional<platform::Date> date = store.date(key);
        add(key, date ? AnyCodable(testing::dateText(*date)) : AnyCodable());
    }
    for (const std::string_view key : {preference::userMetadata, preference::lastMovedLocation,
                                       preference::lastFailedStoppedLocation, platform::qt::KeptServices::key}) {
        const std::optional<AnyCodable::Dictionary> dictionary = store.dictionary(key);
        add(key, dictionary ? AnyCodable(*dictionary) : AnyCodable());
    }
    return stored;
}

std::string textOf(const AnyCodable& value) {
    const auto* const text = std::get_if<std::string>(&value.value);
    return printable(text != nullptr ? *text : json::writeExactly(value));
}

void print(std::string_view name, const std::string& value, Terminal& terminal) {
    constexpr std::size_t column = 38;
    terminal.row(name, value, column);
}

AnyCodable::Dictionary showDevice(const GlobalOptions& options, Terminal& terminal) {
    Session session(options, terminal);
    const AnyCodable::Dictionary stored = storedIn(session.stored());
    const std::string identifier = QVUtils::getDeviceId();
    const std::string model = QVUtils::getDeviceModel();
    const std::string version = session.platform().device().systemVersion();
    const std::string& home = session.platform().home();

    terminal.line(terminal.painted("Device", Paint::heading));
    print("identifier", identifier, terminal);
    print("model", printable(model), terminal);
    print("system version", printable(version), terminal);
    print("home", home.empty() ? "none: everything is in memory" : printable(home), terminal);
    terminal.line();
    terminal.line(terminal.painted("Stored", Paint::heading));
    if (stored.empty()) {
        terminal.line("  nothing yet");
    }
    for (const auto& [key, value] : stored) {
        print(key, textOf(value), terminal);
    }
    return {
        {"identifier", identifier}, {"model", model}, {"systemVersion", version}, {"home", home}, {"stored", stored}};
}

} // namespace

void addDeviceInfo(CLI::App& program, Command& chosen) {
    CLI::App* const verb =
        program.add_subcommand("device", "Show what the service is told about the device, and what is stored");
    verb->fallthrough();
    verb->callback([&chosen] { chosen = showDevice; });
}

} // namespace quorvane::tool
