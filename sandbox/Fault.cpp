#include "sandbox/Fault.h"

#include <array>
#include <charconv>
#include <utility>

#include "sandbox/Split.h"

namespace quorvane::sandbox {
namespace {

using Kind = Fault::Kind;

constexpr std::array<std::pair<Kind, std::string_view>, 8> kindNames{{
    {Kind::drop, "drop"},
    {Kind::reset, "reset"},
    {Kind::truncateBody, "truncate-body"},
    {Kind::truncateHeaders, "truncate-headers"},
    {Kind::status, "status"},
    {Kind::invalidJSON, "invalid-json"},
    {Kind::expiredToken, "expired-token"},
    {Kind::lostReply, "lost-reply"},
}};

/// Empty for a fault that is only a delay.
std::string_view nameOf(Kind kind) {
    for (const auto& [candidate, name] : kindNames) {
        if (candidate == kind) {
            return name;
        }
    }
    return {};
}

constexpr std::chrono::milliseconds longestDelay = std::chrono::hours(1);

struct Problem {
    std::string sentence;
};

std::optional<long> wholeNumber(std::string_view text, long low, long high) {
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
        return std::nullopt;
    }
    return value;
}

long numberOf(std::string_view name, const std::optional<std::string_view>& value, long low, long high) {
    const auto number = value ? wholeNumber(*value, low, high) : std::nullopt;
    if (!number) {
        throw Problem{"\"" + std::string(name) + "\" needs a whole number from " + std::to_string(low) + " to " +
                      std::to_string(high)};
    }
    return *number;
}

std::chrono::milliseconds delayOf(const std::optional<std::string_view>& value) {
    std::string_view text = value.value_or("");
    long unit = 0;
    if (text.ends_with("ms")) {
        unit = 1;
        text.remove_suffix(2);
    } else if (text.ends_with("s")) {
        unit = 1000;
        text.remove_suffix(1);
    }
    const auto number = unit == 0 ? std::nullopt : wholeNumber(text, 1, longestDelay.count() / unit);
    if (!number) {
        throw Problem{R"("delay" needs a time such as "500ms" or "2s", at most an hour)"};
    }
    return std::chrono::milliseconds(*number * unit);
}

void readKind(Fault& fault, Kind kind, std::string_view name, const std::optional<std::string_view>& value) {
    if (fault.kind != Kind::none) {
        throw Problem{"only one thing can go wrong at a time, besides a delay"};
    }
    fault.kind = kind;
    if (kind == Kind::status) {
        fault.status = static_cast<int>(numberOf(name, value, 200, 999));
    } else if (value && (kind == Kind::truncateBody || kind == Kind::truncateHeaders)) {
        fault.bytes = static_cast<std::size_t>(numberOf(name, value, 0, 1'000'000'000));
    } else if (value) {
        throw Problem{"\"" + std::string(name) + "\" takes no value"};
    }
}

void readPart(Fault& fault, std::string_view part) {
    const auto equals = part.find('=');
    const std::string_view name = part.substr(0, equals);
    std::optional<std::string_view> value;
    if (equals != std::string_view::npos) {
        value = part.substr(equals + 1);
    }
    for (const auto& [kind, kindName] : kindNames) {
        if (kindName == name) {
            readKind(fault, kind, name, value);
            return;
        }
    }
    if (name == "delay") {
        fault.delay = delayOf(value);
    } else if (name == "count") {
        fault.count = static_cast<int>(numberOf(name, value, 1, 1'000'000));
    } else if (name == "skip") {
        fault.skip = static_cast<int>(numberOf(name, value, 0, 1'000'000));
    } else {
        throw Problem{"\"" + std::string(name) + "\" is no part of a fault"};
    }
}

} // namespace

std::variant<Fault, std::string> Fault::parse(std::string_view text) {
    try {
        const auto parts = splitAt(':', text);
        Fault fault;
        fault.path = std::string(parts.front());
        if (fault.path != "*" && !fault.path.starts_with('/')) {
            throw Problem{"it must begin with a path such as \"/config\", or with \"*\""};
        }
        for (std::size_t i = 1; i < parts.size(); ++i) {
            readPart(fault, parts[i]);
        }
        if (fault.kind == Kind::none && fault.delay.count() == 0) {
            throw Problem{"it does not say what goes wrong"};
        }
        return fault;
    } catch (const Problem& problem) {
        return "The fault \"" + std::string(text) + "\" cannot be read: " + problem.sentence + ".";
    }
}

bool Fault::matches(std::string_view requestPath) const {
    if (path.ends_with('*')) {
        return requestPath.starts_with(std::string_view(path).substr(0, path.size() - 1));
    }
    return requestPath == path;
}

std::string Fault::text() const {
    std::string parts = path;
    const auto add = [&](std::string_view part) { parts.append(":").append(part); };
    if (kind == Kind::status) {
        add("status=" + std::to_string(status));
    } else if (kind != Kind::none) {
        add(std::string(nameOf(kind)) + (bytes ? "=" + std::to_string(*bytes) : ""));
    }
    if (delay.count() > 0) {
        add("delay=" + std::to_string(delay.count()) + "ms");
    }
    if (count) {
        add("count=" + std::to_string(*count));
    }
    if (skip > 0) {
        add("skip=" + std::to_string(skip));
    }
    return parts;
}

std::string Fault::name() const {
    std::string text(nameOf(kind));
    if (kind == Kind::status) {
        text += "=" + std::to_string(status);
    }
    if (delay.count() > 0) {
        text += (text.empty() ? "" : " ") + ("delay=" + std::to_string(delay.count())) + "ms";
    }
    return text;
}

int FaultList::add(Fault fault) {
    const std::lock_guard lock(mutex);
    faults.emplace_back(++lastNumber, std::move(fault));
    return lastNumber;
}

bool FaultList::remove(int number) {
    const std::lock_guard lock(mutex);
    return std::erase_if(faults, [number](const auto& entry) { return entry.first == number; }) > 0;
}

std::vector<std::pair<int, Fault>> FaultList::all() const {
    const std::lock_guard lock(mutex);
    return {faults.begin(), faults.end()};
}

void FaultList::clear() {
    const std::lock_guard lock(mutex);
    faults.clear();
}

std::optional<Fault> FaultList::take(std::string_view requestPath) {
    const std::lock_guard lock(mutex);
    for (auto entry = faults.begin(); entry != faults.end(); ++entry) {
        Fault& fault = entry->second;
        if (!fault.matches(requestPath)) {
            continue;
        }
        if (fault.skip > 0) {
            --fault.skip;
            continue;
        }
        Fault taken = fault;
        if (fault.count && --*fault.count <= 0) {
            faults.erase(entry);
        }
        return taken;
    }
    return std::nullopt;
}

} // namespace quorvane::sandbox
