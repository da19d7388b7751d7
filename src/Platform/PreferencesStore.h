#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "JSON/AnyCodable.h"
#include "Platform/Clock.h"

namespace quorvane::platform {

/// The application's preferences: typed values under flat keys, kept across launches. Safe from any thread. Every
/// implementation promises:
/// - a write is visible to every read that starts after it returns, and survives a killed process;
/// - a value reads back with the type and the value it was written with, in this run and in later ones; reading it
///   as another type answers none, but an integer reads as a double too;
/// - an absent entry is none; an empty text or dictionary is a value of its own. A dictionary of more than 512 levels,
///   its own included, is refused: what was stored stays, and a line on the platform's output tells so each time;
/// - no call throws, nor blocks for longer than a disk write or a wait of seconds for another process that holds the
///   file; a write that the disk or that process refuses is kept in memory for this run and told once on the platform's
///   output.
class PreferencesStore {
public:
    PreferencesStore() = default;
    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;
    virtual ~PreferencesStore() = default;

    [[nodiscard]] virtual std::optional<std::string> string(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    /// Every double reads back bit for bit, infinities included; NaN reads back as a NaN.
    [[nodiscard]] virtual std::optional<double> number(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<bool> boolean(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<Date> date(std::string_view key) const = 0;
    /// Values keep their kinds (3.0 stays a double). A value that is no JSON value reads back as an empty AnyCodable.
    [[nodiscard]] virtual std::optional<AnyCodable::Dictionary> dictionary(std::string_view key) const = 0;

    virtual void setString(std::string_view key, std::string_view value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setNumber(std::string_view key, double value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setDate(std::string_view key, Date value) = 0;
    virtual void setDictionary(std::string_view key, const AnyCodable::Dictionary& value) = 0;
    virtual void remove(std::string_view key) = 0;

    /// Makes everything written so far survive a loss of power as well. Called after tokens were stored.
    virtual void synchronize() = 0;

    /// Stores @p value, or removes the entry when there is none.
    void setOptionalString(std::string_view key, const std::optional<std::string>& value);
};

} // namespace quorvane::platform
