#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Platform/PreferencesStore.h"

namespace quorvane::testing {

/// Preferences in memory. Two stores over the same contents are two launches of one application.
class MemoryPreferences : public platform::PreferencesStore {
public:
    using Value = std::variant<std::string, std::int64_t, double, bool, platform::Date, AnyCodable::Dictionary>;

    /// What outlives a launch.
    struct Contents {
        std::mutex mutex;
        std::map<std::string, Value, std::less<>> values;
    };

    /// @p output receives the one line that tells that a write was refused.
    explicit MemoryPreferences(std::shared_ptr<Contents> contents = std::make_shared<Contents>(),
                               std::function<void(std::string_view line)> output = {});

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

    /// While on, writes reach this store only and not the contents, as with a full disk: the next launch does not see
    /// them. The first such write prints one line.
    void refuseWrites(bool refuse);

    /// The keys that have a value, sorted by byte.
    [[nodiscard]] std::vector<std::string> keys() const;

    /// How often `synchronize` was called.
    [[nodiscard]] int synchronizeCount() const;

    /// What a further launch starts from.
    [[nodiscard]] std::shared_ptr<Contents> contents() const { return stored; }

private:
    /// Null when there is none. With the mutex held.
    [[nodiscard]] const Value* find(std::string_view key) const;
    template <class T>
    [[nodiscard]] std::optional<T> get(std::string_view key) const;
    void write(std::string_view key, std::optional<Value> value);

    const std::shared_ptr<Contents> stored;
    const std::function<void(std::string_view)> print;
    /// Refused writes; none is a refused removal. Guarded by the contents' mutex, as is the rest.
    std::map<std::string, std::optional<Value>, std::less<>> refused;
    bool refusing = false;
    bool told = false;
    int synchronized = 0;
};

} // namespace quorvane::testing
