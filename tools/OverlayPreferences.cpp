#include "tools/OverlayPreferences.h"

#include <utility>

namespace quorvane::tool {

OverlayPreferences::OverlayPreferences(platform::PreferencesStore& theLower, platform::PreferencesStore& theUpper,
                                       std::string theKey)
    : lower(theLower), upper(theUpper), overlaid(std::move(theKey)) {}

std::optional<std::string> OverlayPreferences::string(std::string_view key) const {
    return home(key).string(key);
}

std::optional<std::int64_t> OverlayPreferences::integer(std::string_view key) const {
    return home(key).integer(key);
}

std::optional<double> OverlayPreferences::number(std::string_view key) const {
    return home(key).number(key);
}

std::optional<bool> OverlayPreferences::boolean(std::string_view key) const {
    return home(key).boolean(key);
}

std::optional<platform::Date> OverlayPreferences::date(std::string_view key) const {
    return home(key).date(key);
}

std::optional<AnyCodable::Dictionary> OverlayPreferences::dictionary(std::string_view key) const {
    return home(key).dictionary(key);
}

void OverlayPreferences::setString(std::string_view key, std::string_view value) {
    home(key).setString(key, value);
}

void OverlayPreferences::setInteger(std::string_view key, std::int64_t value) {
    home(key).setInteger(key, value);
}

void OverlayPreferences::setNumber(std::string_view key, double value) {
    home(key).setNumber(key, value);
}

void OverlayPreferences::setBoolean(std::string_view key, bool value) {
    home(key).setBoolean(key, value);
}

void OverlayPreferences::setDate(std::string_view key, platform::Date value) {
    home(key).setDate(key, value);
}

void OverlayPreferences::setDictionary(std::string_view key, const AnyCodable::Dictionary& value) {
    home(key).setDictionary(key, value);
}

void OverlayPreferences::remove(std::string_view key) {
    home(key).remove(key);
}

void OverlayPreferences::synchronize() {
    lower.synchronize();
}

platform::PreferencesStore& OverlayPreferences::home(std::string_view key) const {
    return key == overlaid ? upper : lower;
}

} // namespace quorvane::tool
