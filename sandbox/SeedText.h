#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::sandbox {

class ObjectText;
class ListText;

/// A JSON value as the text that it is written as: thousands of them are made at every start.
class ValueText {
public:
    ValueText() : json("null") {}
    ValueText(std::string_view text) : json(quoted(text)) {}
    ValueText(const std::string& text) : json(quoted(text)) {}
    ValueText(const char* text) : json(quoted(text)) {}
    ValueText(bool flag) : json(flag ? "true" : "false") {}
    template <std::integral Integer>
    requires(!std::same_as<Integer, bool>) ValueText(Integer number) : json(std::to_string(number)) {}
    ValueText(double number);
    ValueText(const ObjectText& object);
    ValueText(const ListText& list);

    std::string json;

private:
    static std::string quoted(std::string_view text);
};

/// A JSON object under construction. Its members keep the order in which they came.
class ObjectText {
public:
    using Member = std::pair<std::string_view, ValueText>;

    ObjectText() = default;
    /// The keys must outlive the object.
    ObjectText(std::initializer_list<Member> theMembers) : members(theMembers) {}

    /// The member under @p key, a new one when there is none.
    ValueText& operator[](std::string_view key) {
        const auto found =
            std::find_if(members.begin(), members.end(), [&](const Member& member) { return member.first == key; });
        return found != members.end() ? found->second : members.emplace_back(key, ValueText()).second;
    }
    void add(const ObjectText& other) {
        for (const auto& [key, value] : other.members) {
            (*this)[key] = value;
        }
    }
    [[nodiscard]] std::string text() const;

private:
    std::vector<Member> members;
};

class ListText {
public:
    ListText() = default;
    ListText(std::initializer_list<ValueText> theItems) : items(theItems) {}

    void add(ValueText item) { items.push_back(std::move(item)); }
    [[nodiscard]] std::size_t size() const { return items.size(); }
    [[nodiscard]] std::string text() const;

private:
    std::vector<ValueText> items;
};

} // namespace quorvane::sandbox
