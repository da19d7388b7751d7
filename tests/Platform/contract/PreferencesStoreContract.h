#pragma once

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "Platform/PreferencesStore.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class PreferencesStoreContract : public Contract {
protected:
    [[nodiscard]] PreferencesStore& store() { return platform().preferences(); }

    /// Runs @p check now and after a relaunch.
    void nowAndAfterARelaunch(const std::function<void()>& check) {
        {
            SCOPED_TRACE("in the run that wrote");
            check();
        }
        rig->relaunch();
        SCOPED_TRACE("after a relaunch");
        check();
    }
};

TEST_P(PreferencesStoreContract, AnAbsentEntryIsNoneOfAnyType) {
    EXPECT_EQ(store().string("k"), std::nullopt);
    EXPECT_EQ(store().integer("k"), std::nullopt);
    EXPECT_EQ(store().number("k"), std::nullopt);
    EXPECT_EQ(store().boolean("k"), std::nullopt);
    EXPECT_EQ(store().date("k"), std::nullopt);
    EXPECT_EQ(store().dictionary("k"), std::nullopt);
}

TEST_P(PreferencesStoreContract, TextReadsBackByteForByte) {
    const std::vector<std::string> texts = {"",
                                            "plain",
                                            "42",
                                            "3.0",
                                            "true",
                                            "Gr\xC3\xBC\xC3\x9F \xF0\x9F\x9A\xB2",
                                            std::string("a\0b", 3),
                                            "line\nbreak \"quoted\" \\",
                                            "\xFF\xFE not UTF-8",
                                            std::string(100'000, 'x')};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        store().setString("text" + std::to_string(i), texts[i]);
    }

    nowAndAfterARelaunch([&] {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_EQ(store().string("text" + std::to_string(i)), texts[i]);
        }
    });
}

TEST_P(PreferencesStoreContract, AnEmptyTextIsAValueOfItsOwn) {
    store().setString("empty", "");
    store().setString("emptyView", std::string_view());

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().string("empty"), "");
        EXPECT_EQ(store().string("emptyView"), "");
    });
}

TEST_P(PreferencesStoreContract, IntegersReadBackAtTheirLimits) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{42}, Limits::min(), Limits::max()}) {
        store().setInteger("integer" + std::to_string(value), value);
    }

    nowAndAfterARelaunch([&] {
        for (const std::int64_t value :
             {std::int64_t{0}, std::int64_t{-1}, std::int64_t{42}, Limits::min(), Limits::max()}) {
            EXPECT_EQ(store().integer("integer" + std::to_string(value)), value);
        }
    });
}

TEST_P(PreferencesStoreContract, DoublesReadBackBitForBit) {
    using Limits = std::numeric_limits<double>;
    const std::vector<double> values = {0.0,
                                        -0.0,
                                        42.0,
                                        0.1,
                                        1.0 / 3.0,
                                        9007199254740993.0,
                                        -1e300,
                                        Limits::max(),
                                        Limits::min(),
                                        Limits::denorm_min(),
                                        Limits::infinity(),
                                        -Limits::infinity()};
    for (std::size_t i = 0; i < values.size(); ++i) {
        store().setNumber("number" + std::to_string(i), values[i]);
    }

    nowAndAfterARelaunch([&] {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::optional<double> value = store().number("number" + std::to_string(i));
            ASSERT_TRUE(value.has_value()) << values[i];
            EXPECT_EQ(std::bit_cast<std::uint64_t>(*value), std::bit_cast<std::uint64_t>(values[i])) << values[i];
        }
    });
}

TEST_P(PreferencesStoreContract, ANaNReadsBackAsANaN) {
    store().setNumber("nan", std::numeric_limits<double>::quiet_NaN());

    nowAndAfterARelaunch([&] {
        ASSERT_TRUE(store().number("nan").has_value());
        EXPECT_TRUE(std::isnan(*store().number("nan")));
    });
}

TEST_P(PreferencesStoreContract, BoolsReadBack) {
    store().setBoolean("yes", true);
    store().setBoolean("no", false);

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().boolean("yes"), true);
        EXPECT_EQ(store().boolean("no"), false);
    });
}

TEST_P(PreferencesStoreContract, DatesReadBackToTheNanosecond) {
    using std::chrono::nanoseconds;
    const std::vector<Date> dates = {Date(), Date(nanoseconds(1'700'000'000'123'456'789)), Date(nanoseconds(-1)),
                                     Date::min(), Date::max()};
    for (std::size_t i = 0; i < dates.size(); ++i) {
        store().setDate("date" + std::to_string(i), dates[i]);
    }

    nowAndAfterARelaunch([&] {
        for (std::size_t i = 0; i < dates.size(); ++i) {
            EXPECT_TRUE(store().date("date" + std::to_string(i)) == dates[i]) << i;
        }
    });
}

TEST_P(PreferencesStoreContract, ADictionaryKeepsTheKindsOfItsValues) {
    const AnyCodable::Dictionary value = {
        {"integer", 3},
        {"double", 3.0},
        {"bool", true},
        {"text", "3"},
        {"empty", ""},
        {"list", AnyCodable::List{1, 2.5, "x", false}},
        {"nested", AnyCodable::Dictionary{{"a b", AnyCodable::Dictionary{}}}},
        {"", "no name"},
    };
    store().setDictionary("dictionary", value);

    nowAndAfterARelaunch([&] { EXPECT_EQ(store().dictionary("dictionary"), value); });
}

TEST_P(PreferencesStoreContract, AnEmptyDictionaryIsAValueOfItsOwn) {
    store().setDictionary("empty", {});

    nowAndAfterARelaunch([&] { EXPECT_EQ(store().dictionary("empty"), AnyCodable::Dictionary()); });
}

TEST_P(PreferencesStoreContract, AValueThatIsNoJSONValueReadsBackAsAnEmptyOne) {
    store().setDictionary("dictionary", {{"infinite", std::numeric_limits<double>::infinity()},
                                         {"nan", std::numeric_limits<double>::quiet_NaN()},
                                         {"none", AnyCodable()}});

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().dictionary("dictionary"),
                  (AnyCodable::Dictionary{{"infinite", {}}, {"nan", {}}, {"none", {}}}));
    });
}

TEST_P(PreferencesStoreContract, ADictionaryDeeperThanWhatCanBeReadIsRefusedWithALineAndTheOlderOneStays) {
    const auto dictionaryOf = [](std::size_t levels) {
        AnyCodable value = 1;
        for (std::size_t i = 1; i < levels; ++i) {
            value = i % 2 == 0 ? AnyCodable(AnyCodable::List{std::move(value)})
                               : AnyCodable(AnyCodable::Dictionary{{"k", std::move(value)}});
        }
        return AnyCodable::Dictionary{{"k", std::move(value)}};
    };
    store().setDictionary("dictionary", dictionaryOf(512));
    EXPECT_TRUE(rig->output().empty());

    store().setDictionary("dictionary", dictionaryOf(513));
    store().setDictionary("none", dictionaryOf(600));

    EXPECT_EQ(rig->output().size(), 2U);
    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().dictionary("dictionary"), dictionaryOf(512));
        EXPECT_EQ(store().dictionary("none"), std::nullopt);
    });
}

TEST_P(PreferencesStoreContract, AnIntegerReadsAsADoubleToo) {
    store().setInteger("integer", -7);

    nowAndAfterARelaunch([&] { EXPECT_EQ(store().number("integer"), -7.0); });
}

TEST_P(PreferencesStoreContract, AValueReadAsAnotherTypeIsNone) {
    store().setString("text", "1");
    store().setInteger("integer", 1);
    store().setNumber("number", 1.0);
    store().setBoolean("bool", true);
    store().setDate("date", Date(std::chrono::nanoseconds(1)));
    store().setDictionary("dictionary", {{"a", 1}});

    nowAndAfterARelaunch([&] {
        for (const char* key : {"integer", "number", "bool", "date", "dictionary"}) {
            EXPECT_EQ(store().string(key), std::nullopt) << key;
        }
        for (const char* key : {"text", "number", "bool", "date", "dictionary"}) {
            EXPECT_EQ(store().integer(key), std::nullopt) << key;
        }
        for (const char* key : {"text", "bool", "date", "dictionary"}) {
            EXPECT_EQ(store().number(key), std::nullopt) << key;
        }
        for (const char* key : {"text", "integer", "number", "date", "dictionary"}) {
            EXPECT_EQ(store().boolean(key), std::nullopt) << key;
        }
        for (const char* key : {"text", "integer", "number", "bool", "dictionary"}) {
            EXPECT_EQ(store().date(key), std::nullopt) << key;
        }
        for (const char* key : {"text", "integer", "number", "bool", "date"}) {
            EXPECT_EQ(store().dictionary(key), std::nullopt) << key;
        }
    });
}

TEST_P(PreferencesStoreContract, AWriteReplacesAValueOfAnyType) {
    store().setString("k", "text");
    store().setInteger("k", 5);
    EXPECT_EQ(store().integer("k"), 5);

    store().setBoolean("k", false);

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().boolean("k"), false);
        EXPECT_EQ(store().integer("k"), std::nullopt);
        EXPECT_EQ(store().string("k"), std::nullopt);
    });
}

TEST_P(PreferencesStoreContract, ARemovedEntryIsAbsent) {
    store().setString("k", "text");
    store().setString("other", "stays");

    store().remove("k");
    store().remove("never there");

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().string("k"), std::nullopt);
        EXPECT_EQ(store().string("other"), "stays");
    });
}

TEST_P(PreferencesStoreContract, AnOptionalTextIsStoredOrRemoved) {
    store().setOptionalString("k", "text");
    EXPECT_EQ(store().string("k"), "text");

    store().setOptionalString("k", std::nullopt);

    nowAndAfterARelaunch([&] { EXPECT_EQ(store().string("k"), std::nullopt); });
}

TEST_P(PreferencesStoreContract, KeysAreTakenByteForByte) {
    store().setInteger("key", 1);
    store().setInteger("Key", 2);
    store().setInteger("key ", 3);
    store().setInteger("", 4);
    store().setInteger(std::string_view("key\0x", 5), 5);
    store().setInteger("k%_'\";--", 6);

    nowAndAfterARelaunch([&] {
        EXPECT_EQ(store().integer("key"), 1);
        EXPECT_EQ(store().integer("Key"), 2);
        EXPECT_EQ(store().integer("key "), 3);
        EXPECT_EQ(store().integer(""), 4);
        EXPECT_EQ(store().integer(std::string_view("key\0x", 5)), 5);
        EXPECT_EQ(store().integer("k%_'\";--"), 6);
        EXPECT_EQ(store().integer("k%"), std::nullopt);
    });
}

TEST_P(PreferencesStoreContract, SynchronizingChangesNoValue) {
    store().setString("token", "t");

    store().synchronize();
    store().synchronize();

    nowAndAfterARelaunch([&] { EXPECT_EQ(store().string("token"), "t"); });
}

TEST_P(PreferencesStoreContract, ThreadsMayWriteAndReadAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            const std::string own = "own" + std::to_string(thread);
            for (int i = 0; i < 50; ++i) {
                store().setInteger(own, i);
                store().setInteger("shared", i);
                wrong[thread] += store().integer(own) == i ? 0 : 1;
                wrong[thread] += store().integer("shared").has_value() ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(wrong, std::vector<int>(4, 0));
    nowAndAfterARelaunch([&] {
        for (int thread = 0; thread < 4; ++thread) {
            EXPECT_EQ(store().integer("own" + std::to_string(thread)), 49);
        }
    });
}

} // namespace quorvane::platform::contract
