#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/Native/PreferencesFile.h"
#include "Platform/PreferencesStore.h"

namespace quorvane::platform::native {

/// Preferences in a SQLite file, which several processes may share.
///
/// What the file does not take is kept in memory for this run and told with one line. A file that cannot be read is
/// put aside under another name, with one line, and an empty one begun.
class SQLitePreferences final : public PreferencesStore {
public:
    using Tell = std::function<void(std::string_view line)>;

    /// @p path is the file's, in a directory that is there. @p tell is called by any of the calls and may make others.
    SQLitePreferences(std::string path, Tell tell);

    /// In memory, for this run.
    explicit SQLitePreferences(Tell tell);

    [[nodiscard]] std::optional<std::string> string(std::string_view key) const override;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override;
    [[nodiscard]] std::optional<double> number(std::string_view key) const override;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;
    [[nodiscard]] std::optional<Date> date(std::string_view key) const override;
    [[nodiscard]] std::optional<AnyCodable::Dictionary> dictionary(std::string_view key) const override;

    void setString(std::string_view key, std::string_view value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setNumber(std::string_view key, double value) override;
    void setBoolean(std::string_view key, bool value) override;
    void setDate(std::string_view key, Date value) override;
    void setDictionary(std::string_view key, const AnyCodable::Dictionary& value) override;
    void remove(std::string_view key) override;
    void synchronize() override;

private:
    /// One call at a time. What there is to tell is told when the next one may come.
    class Use {
    public:
        explicit Use(const SQLitePreferences& thePreferences) : preferences(thePreferences), lock(preferences.mutex) {}
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        ~Use();

    private:
        const SQLitePreferences& preferences;
        std::unique_lock<std::mutex> lock;
    };

    template <class Type>
    std::optional<Type> get(std::string_view key) const;
    StoredValue read(std::string_view key) const;
    void write(std::string_view key, StoredValue value);
    /// Runs @p operation on the file; when that finds the file damaged, once more on an empty one. Whether it is done.
    template <class Operation>
    bool attempt(Operation operation) const;
    bool open() const;
    bool putAside() const;
    void tellOnce() const;
    void tell(std::string line) const;

    const std::string path;
    const Tell output;
    mutable std::mutex mutex;
    mutable std::vector<std::string> untold;
    /// None when there is no file to work on.
    mutable std::unique_ptr<PreferencesFile> file;
    /// What the file did not take; a value without alternative is a removal.
    std::map<std::string, StoredValue, std::less<>> unsaved;
    mutable bool told = false;
};

} // namespace quorvane::platform::native
