#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "Platform/Lifetime.h"
#include "Platform/Precondition.h"

namespace quorvane::platform {
namespace {

struct Owner {
    int calls = 0;
    Lifetime lifetime;
};

TEST(Lifetime, GuardedWorkRunsWhileItsOwnerLives) {
    Owner owner;
    auto work = owner.lifetime.guard([&](int amount) { owner.calls += amount; });

    work(2);
    work(3);

    EXPECT_EQ(owner.calls, 5);
}

TEST(Lifetime, GuardedWorkDoesNothingOnceItsOwnerIsGone) {
    std::optional<Owner> owner(std::in_place);
    int calls = 0;
    const auto count = [&] { ++calls; };
    auto work = owner->lifetime.guard(count);
    auto copy = work;

    owner.reset();
    work();
    copy();

    EXPECT_EQ(calls, 0);
}

TEST(Lifetime, WhatTheWorkHoldsIsKeptUntilTheWorkIsDropped) {
    const auto held = std::make_shared<int>(1);
    std::optional<Owner> owner(std::in_place);
    {
        const auto work = owner->lifetime.guard([held] {});
        owner.reset();
        EXPECT_EQ(held.use_count(), 2);
    }

    EXPECT_EQ(held.use_count(), 1);
}

TEST(Precondition, WhatHoldsCostsNothing) {
    bool evaluated = false;

    QV_PRECONDITION((evaluated = true), "it is evaluated");

    EXPECT_TRUE(evaluated);
}

TEST(PreconditionDeathTest, WhatDoesNotHoldEndsTheProcessWithASentence) {
    EXPECT_DEATH(QV_PRECONDITION(1 + 1 == 3, "arithmetic must be generous"),
                 "precondition failed: arithmetic must be generous \\(.*LifetimeTest.cpp:[0-9]+\\)");
}

} // namespace
} // namespace quorvane::platform
