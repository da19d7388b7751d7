#include "Platform/Native/SQLitePreferences.h"

#include <utility>

#include "JSON/Depth.h"
#include "JSON/JSON.h"

namespace quorvane::platform::native {

SQLitePreferences::SQLitePreferences(Tell theTell) : output(std::move(theTell)) {}

SQLitePreferences::SQLitePreferences(std::string thePath, Tell theTell)
    : path(std::move(thePath)), output(std::move(theTell)), file(std::make_unique<PreferencesFile>(path)) {
    const Use use(*this);
    open();
}

SQLitePreferences::Use::~Use() {
    const std::vector<std::string> lines = std::exchange(preferences.untold, {});
    lock.unlock();
    for (const std::string& line : lines) {
        preferences.output(line);
    }
}

void SQLitePreferences::tell(std::string line) const {
    untold.push_back(std::move(line));
}

bool SQLitePreferences::open() const {
    FileOutcome outcome = file->open();
    if (outcome == FileOutcome::damaged && putAside()) {
        return true;
    }
    if (outcome != FileOutcome::done) {
        tellOnce();
        file.reset();
    }
    return file != nullptr;
}

bool SQLitePreferences::putAside() const {
    const std::string reason = file->reason();
    const std::string aside = file->putAside();
    if (!aside.empty()) {
        tell("QuorvaneSDK: the preferences in " + path + " cannot be read (" + reason +
             "); they start empty, and the file is kept as " + aside);
    }
    return file->open() == FileOutcome::done;
}

void SQLitePreferences::tellOnce() const {
    if (!std::exchange(told, true)) {
        tell("QuorvaneSDK: preferences cannot be kept in " + path + " (" + file->reason() +
             "); new ones live in memory for this run");
    }
}

template <class Operation>
bool SQLitePreferences::attempt(Operation operation) const {
    if (!file) {
        return false;
    }
    FileOutcome outcome = operation(*file);
    if (outcome == FileOutcome::damaged) {
        if (!putAside()) {
            tellOnce();
            file.reset();
            return false;
        }
        outcome = operation(*file);
    }
    return outcome == FileOutcome::done;
}

StoredValue SQLitePreferences::read(std::string_view key) const {
    const Use use(*this);
    if (const auto found = unsaved.find(key); found != unsaved.end()) {
        return found->second;
    }
    StoredValue value;
    attempt([&](PreferencesFile& open) { return open.read(key, value); });
    return value;
}

void SQLitePreferences::write(std::string_view key, StoredValue value) {
    const Use use(*this);
    if (attempt([&](PreferencesFile& open) { return open.write(key, value); })) {
        if (const auto found = unsaved.find(key); found != unsaved.end()) {
            unsaved.erase(found);
        }
        return;
    }
    if (file) {
        tellOnce();
    }
    unsaved.insert_or_assign(std::string(key), std::move(value));
}

void SQLitePreferences::synchronize() {
    const Use use(*this);
    for (auto entry = unsaved.begin(); entry != unsaved.end();) {
        const bool saved = attempt([&](PreferencesFile& open) { return open.write(entry->first, entry->second); });
        entry = saved ? unsaved.erase(entry) : std::next(entry);
    }
    attempt([](PreferencesFile& open) { return open.synchronize(); });
}

template <class Type>
std::optional<Type> SQLitePreferences::get(std::string_view key) const {
    StoredValue value = read(key);
    auto* wanted = std::get_if<Type>(&value);
    return wanted == nullptr ? std::nullopt : std::optional<Type>(std::move(*wanted));
}

std::optional<std::string> SQLitePreferences::string(std::string_view key) const {
    return get<std::string>(key);
}

std::optional<std::int64_t> SQLitePreferences::integer(std::string_view key) const {
    return get<std::int64_t>(key);
}

std::optional<double> SQLitePreferences::number(std::string_view key) const {
    const StoredValue value = read(key);
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*integer);
    }
    const auto* number = std::get_if<double>(&value);
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::optional<bool> SQLitePreferences::boolean(std::string_view key) const {
    return get<bool>(key);
}

std::optional<Date> SQLitePreferences::date(std::string_view key) const {
    return get<Date>(key);
}

std::optional<AnyCodable::Dictionary> SQLitePreferences::dictionary(std::string_view key) const {
    std::optional<StoredDictionary> stored = get<StoredDictionary>(key);
    if (!stored) {
        return std::nullopt;
    }
    try {
        AnyCodable value = json::readExactly(std::move(stored->text));
        auto* dictionary = std::get_if<AnyCodable::Dictionary>(&value.value);
        return dictionary == nullptr ? std::nullopt : std::optional(std::move(*dictionary));
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

void SQLitePreferences::setString(std::string_view key, std::string_view value) {
    write(key, std::string(value));
}

void SQLitePreferences::setInteger(std::string_view key, std::int64_t value) {
    write(key, value);
}

void SQLitePreferences::setNumber(std::string_view key, double value) {
    write(key, value);
}

void SQLitePreferences::setBoolean(std::string_view key, bool value) {
    write(key, value);
}

void SQLitePreferences::setDate(std::string_view key, Date value) {
    write(key, value);
}

void SQLitePreferences::setDictionary(std::string_view key, const AnyCodable::Dictionary& value) {
    if (json::isTooDeep(value)) {
        const Use use(*this);
        tell("QuorvaneSDK: " + std::string(key) + " is not stored: it is nested more than " +
             std::to_string(json::deepest) + " levels deep");
        return;
    }
    write(key, StoredDictionary{json::writeExactly(value)});
}

void SQLitePreferences::remove(std::string_view key) {
    write(key, std::monostate());
}

} // namespace quorvane::platform::native
