#pragma once

#include <cstdint>
#include <string>

#include "sandbox/Chance.h"
#include "sandbox/SeedPlaces.h"
#include "sandbox/SeedText.h"

namespace quorvane::sandbox {

/// An invented task at a place; without "distance" and "state", which depend on the request.
struct SeedTask {
    std::string key;
    std::string campaign;
    ObjectText json;
};

/// The task with this number. The kind of its questions follows from the number, so that a few tasks in a row have
/// every kind.
[[nodiscard]] SeedTask makeTask(Chance& chance, std::int64_t number, const SeedPlace& place);

/// The task "task-00000", which is the same for every seed but for its place: a question of every type, among them one
/// where the picked choice decides which question is next and one that needs a photo, with scores and a reward.
[[nodiscard]] SeedTask makeTour(const SeedPlace& place);

/// Where a task at a place is to be done; the keys of the place's address with the place's name.
[[nodiscard]] ObjectText makeLocation(const SeedPlace& place);

/// The questions of a task: each one's "parentKey" is the key of the one before it.
[[nodiscard]] ListText makeQuestions(Chance& chance, std::int64_t taskNumber, const ObjectText& owners);

/// The rewards of a task, none for some.
[[nodiscard]] ListText makeRewards(Chance& chance, std::int64_t taskNumber, const ObjectText& owners);

/// Milliseconds since 1970 of everything that was made: a constant, so that the data do not depend on the day.
constexpr std::int64_t seedTime = 1'700'000'000'000;

} // namespace quorvane::sandbox
