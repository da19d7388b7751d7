#include "testing/MemoryPreferences.h"

#include <cmath>

#include "JSON/Depth.h"

namespace quorvane::testing {
namespace {

AnyCodable storable(const AnyCodable& value);

AnyCodable::Dictionary storable(const AnyCodable::Dictionary& dictionary) {
    AnyCodable::Dictionary copy;
    for (const auto& [key, element] : dictionary) {
        copy.emplace_hint(copy.end(), key, storable(element));
    }
    return copy;
}

/// @p value with everything that JSON cannot hold replaced by an empty value.
AnyCodable storable(const AnyCodable& value) {
    if (const auto* number = std::get_if<double>(&value.value)) {
        return std::isfinite(*number) ? value : AnyCodable();
    }
    if (const auto* list = std::get_if<AnyCodable::List>(&value.value)) {
        AnyCodable::List copy;
        copy.reserve(list->size());
        for (const AnyCodable& element : *list) {
            copy.push_back(storable(element));
        }
        return copy;
    }
    if (const auto* dictionary = std::get_if<AnyCodable::Dictionary>(&value.value)) {
        return storable(*dictionary);
    }
    return value;
}

} // namespace

MemoryPreferences::MemoryPreferences(std::shared_ptr<Contents> contents, std::function<void(std::string_view)> output)
    : stored(contents ? std::move(contents) : std::make_shared<Contents>()), print(std::move(output)) {}

const MemoryPreferences::Value* MemoryPreferences::find(std::string_view key) const {
    if (const auto found = refused.find(key); found != refused.end()) {
        return found->second ? &*found->second : nullptr;
    }
    const auto found = stored->values.find(key);
    return found == stored->values.end() ? nullptr : &found->second;
}

template <class T>
std::optional<T> MemoryPreferences::get(std::string_view key) const {
    const std::lock_guard lock(stored->mutex);
    const Value* const value = find(key);
    const T* const typed = value != nullptr ? std::get_if<T>(value) : nullptr;
    return typed != nullptr ? std::optional<T>(*typed) : std::nullopt;
}

std::optional<std::string> MemoryPreferences::string(std::string_view key) const {
    return get<std::string>(key);
}

std::optional<std::int64_t> MemoryPreferences::integer(std::string_view key) const {
    return get<std::int64_t>(key);
}

std::optional<double> MemoryPreferences::number(std::string_view key) const {
    if (const auto whole = get<std::int64_t>(key)) {
        return static_cast<double>(*whole);
    }
    return get<double>(key);
}

std::optional<bool> MemoryPreferences::boolean(std::string_view key) const {
    return get<bool>(key);
}

std::optional<platform::Date> MemoryPreferences::date(std::string_view key) const {
    return get<platform::Date>(key);
}

std::optional<AnyCodable::Dictionary> MemoryPreferences::dictionary(std::string_view key) const {
    return get<AnyCodable::Dictionary>(key);
}

void MemoryPreferences::setString(std::string_view key, std::string_view value) {
    write(key, std::string(value));
}

void MemoryPreferences::setInteger(std::string_view key, std::int64_t value) {
    write(key, value);
}

void MemoryPreferences::setNumber(std::string_view key, double value) {
    write(key, value);
}

void MemoryPreferences::setBoolean(std::string_view key, bool value) {
    write(key, value);
}

void MemoryPreferences::setDate(std::string_view key, platform::Date value) {
    write(key, value);
}

void MemoryPreferences::setDictionary(std::string_view key, const AnyCodable::Dictionary& value) {
    if (json::isTooDeep(value)) {
        if (print) {
            print(std::string(key) + " is not stored: it is nested more than " + std::to_string(json::deepest) +
                  " levels deep.");
        }
        return;
    }
    write(key, storable(value));
}

void MemoryPreferences::remove(std::string_view key) {
    write(key, std::nullopt);
}

void MemoryPreferences::write(std::string_view key, std::optional<Value> value) {
    bool tell = false;
    {
        const std::lock_guard lock(stored->mutex);
        if (refusing) {
            tell = !std::exchange(told, true);
            refused.insert_or_assign(std::string(key), std::move(value));
        } else {
            if (const auto before = refused.find(key); before != refused.end()) {
                refused.erase(before);
            }
            const auto found = stored->values.find(key);
            const bool isThere = found != stored->values.end();
            if (isThere && value) {
                found->second = std::move(*value);
            } else if (isThere) {
                stored->values.erase(found);
            } else if (value) {
                stored->values.emplace(key, std::move(*value));
            }
        }
    }
    if (tell && print) {
        print("The preferences cannot be written; changes last until the application ends.");
    }
}

void MemoryPreferences::synchronize() {
    const std::lock_guard lock(stored->mutex);
    ++synchronized;
}

void MemoryPreferences::refuseWrites(bool refuse) {
    const std::lock_guard lock(stored->mutex);
    refusing = refuse;
}

std::vector<std::string> MemoryPreferences::keys() const {
    const std::lock_guard lock(stored->mutex);
    std::map<std::string, bool> present;
    for (const auto& [key, value] : stored->values) {
        present[key] = true;
    }
    for (const auto& [key, value] : refused) {
        present[key] = value.has_value();
    }
    std::vector<std::string> result;
    for (const auto& [key, isPresent] : present) {
        if (isPresent) {
            result.push_back(key);
        }
    }
    return result;
}

int MemoryPreferences::synchronizeCount() const {
    const std::lock_guard lock(stored->mutex);
    return synchronized;
}

} // namespace quorvane::testing
