#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/PreferencesStore.h"

namespace quorvane::tool {

/// Preferences in which one key lives in a store of its own, on top of all the others: what is set under it for this
/// run hides what is stored below, and never gets there.
class OverlayPreferences final : public platform::PreferencesStore {
public:
    /// Both stores outlive this one.
    OverlayPreferences(platform::PreferencesStore& theLower, platform::PreferencesStore& theUpper, std::string theKey);

    [[nodiscard]] std::optional<std::string> string(std::string_view key) const override;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override;
    [[nodiscard]] std::optional<double> number(std::string_view key) const override;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;
    [[nodiscard]] std::optional<platform::Date> date(std::string_view key) const override;
    [[nodiscard]] std::optional<AnyCodable::Dictionary> dictionary(std::string_view key) const override;

    void setString(std::string_view key, std::string_view value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setNumber(std::string_view key, double value) override;
    void setBoolean(std::string_view key, bool value) override;
    void setDate(std::string_view key, platform::Date value) override;
    void setDictionary(std::string_view key, const AnyCodable::Dictionary& value) override;
    void remove(std::string_view key) override;
    void synchronize() override;

private:
    [[nodiscard]] platform::PreferencesStore& home(std::string_view key) const;

    platform::PreferencesStore& lower;
    platform::PreferencesStore& upper;
    std::string overlaid;
};

} // namespace quorvane::tool
