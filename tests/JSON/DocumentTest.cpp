#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::DecodingError;
using json::Document;
using json::readExactly;

namespace {

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

struct Malformed {
    const char* name;
    std::string text;
    const char* sentence;
};

const std::vector<Malformed>& malformedTexts() {
    static const std::vector<Malformed> texts{
        {"Nothing", "", "the text is empty"},
        {"OnlyBlanks", " \n\t ", "the text is empty"},
        {"TrailingText", "{} x", "the text is no JSON document"},
        {"TwoDocuments", "[1] [2]", "the text is no JSON document"},
        {"TrailingComma", R"({"a":1,})", "the text is no JSON document"},
        {"MissingColon", R"({"a" 1})", "the text is no JSON document"},
        {"KeyThatIsNoText", "{1:2}", "the text is no JSON document"},
        {"OpenObject", R"({"a":1)", "the text is no JSON document"},
        {"WrongBracket", "[1}", "the text is no JSON document"},
        {"OpenText", R"(["abc)", "a string in the text has no end"},
        {"HalfALiteral", "nul", "the text is no JSON document"},
        {"SingleQuotes", "{'a':1}", "the text is no JSON document"},
        {"Comment", "[1] // one", "the text is no JSON document"},
        {"NotANumber", "[NaN]", "the text is no JSON document"},
        {"ByteOrderMark", "\xEF\xBB\xBF{}", "the text is no JSON document"},
        {"LeadingZero", "[01]", "a number in the text is malformed or beyond a double"},
        {"LonePoint", "[1.]", "a number in the text is malformed or beyond a double"},
        {"LoneMinus", "[-]", "a number in the text is malformed or beyond a double"},
        {"EmptyExponent", "[1e]", "a number in the text is malformed or beyond a double"},
        {"NumberBeyondADouble", "[1e400]", "a number in the text is malformed or beyond a double"},
        {"IntegerBeyondADouble", "[-1" + repeated("0", 400) + "]",
         "a number in the text is malformed or beyond a double"},
        {"LongIntegerWithLeadingZero", "[0123456789012345678901234]",
         "a number in the text is malformed or beyond a double"},
        {"LoneHighSurrogate", R"(["\ud800"])", "a string in the text has a wrong escape"},
        {"LoneLowSurrogate", R"(["\udc00"])", "a string in the text has a wrong escape"},
        {"SurrogatesInReverse", R"(["\udc00\ud800"])", "a string in the text has a wrong escape"},
        {"HighSurrogateBeforeALetter", R"(["\ud800\u0041"])", "a string in the text has a wrong escape"},
        {"LoneSurrogateInAKey", R"({"\ud800":1})", "a string in the text has a wrong escape"},
        {"UnknownEscape", R"(["\x41"])", "a string in the text has a wrong escape"},
        {"ShortEscape", R"(["\u12"])", "a string in the text has a wrong escape"},
        {"LineBreakInAText", "[\"a\nb\"]", "a string in the text holds a control character"},
        {"ZeroByte", std::string("[1]\0", 4), "the text is no JSON document"},
        {"BrokenUTF8", "[\"\xC3\x28\"]", "the text is not UTF-8"},
        {"OverlongUTF8", "[\"\xC0\xAF\"]", "the text is not UTF-8"},
        {"SurrogateInUTF8", "[\"\xED\xA0\x80\"]", "the text is not UTF-8"},
        {"CutUTF8", "[\"\xE2\x82\"]", "the text is not UTF-8"},
        {"BrokenUTF8OutsideOfTexts", "[1]\xFF", "the text is not UTF-8"},
        {"TooDeep", repeated("[", 513) + repeated("]", 513), "the text is nested more than 512 levels deep"},
        {"TooDeepObjects", repeated("{\"a\":", 513) + "1" + repeated("}", 513),
         "the text is nested more than 512 levels deep"},
        {"ManyOpenBrackets", repeated("[", 1000000), "the text is no JSON document"},
    };
    return texts;
}

class MalformedTest : public ::testing::TestWithParam<Malformed> {};

} // namespace

TEST_P(MalformedTest, IsRefusedWithASentence) {
    try {
        (void)Document::parse(GetParam().text);
        FAIL() << "parsed";
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.kind, DecodingError::Kind::malformed);
        EXPECT_STREQ(error.what(), GetParam().sentence);
        EXPECT_TRUE(error.codingPath.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, MalformedTest, ::testing::ValuesIn(malformedTexts()),
                         [](const auto& text) { return std::string(text.param.name); });

TEST(Documents, MayBe512LevelsDeep) {
    for (const std::string inner : {"", "1", "{}"}) {
        const std::size_t outer = inner == "{}" ? 511 : 512;
        AnyCodable value = readExactly(repeated("[", outer) + inner + repeated("]", outer));
        std::size_t depth = 0;
        while (std::holds_alternative<AnyCodable::List>(value.value)) {
            ++depth;
            const auto& list = std::get<AnyCodable::List>(value.value);
            value = list.empty() ? AnyCodable() : AnyCodable(list.front());
        }
        EXPECT_EQ(depth, outer);
    }
}

TEST(Documents, AreStillRefusedBelow512LevelsAfterADeepOne) {
    (void)Document::parse(repeated("[", 512) + "1" + repeated("]", 512));

    EXPECT_THROW((void)Document::parse(repeated("[", 513) + repeated("]", 513)), DecodingError);
}

TEST(Documents, BracketsInTextsAreNoLevels) {
    const std::string text = "[\"" + repeated("[\\\"", 600) + "\"]";

    EXPECT_NO_THROW((void)Document::parse(text));
}

TEST(Documents, AnIntegerBeyond64BitsIsADouble) {
    EXPECT_EQ(readExactly("[9223372036854775807,9223372036854775808,18446744073709551616,-9223372036854775809,"
                          "\"12345678901234567890123\",1.12345678901234567890123,-9223372036854775808,{\"k\":1e5}]"),
              (AnyCodable::List{INT64_MAX, 9223372036854775808.0, 18446744073709551616.0, -9223372036854775809.0,
                                "12345678901234567890123", 1.12345678901234567890123, INT64_MIN,
                                AnyCodable::Dictionary{{"k", 1e5}}}));
    EXPECT_EQ(readExactly("123456789012345678901234567890"), AnyCodable(123456789012345678901234567890.0));
}

TEST(Documents, ANumberTooSmallForADoubleIsZero) {
    EXPECT_EQ(readExactly("1e-400"), AnyCodable(0.0));
}

TEST(Documents, NeedNoSpareCapacityBehindTheText) {
    std::string exact = R"({"age":41})";
    exact.shrink_to_fit();
    std::string roomy = R"({"age":42})";
    roomy.reserve(4096);

    EXPECT_EQ(json::decode<modelling::Owner>(std::move(exact)).age, 41);
    EXPECT_EQ(json::decode<modelling::Owner>(std::move(roomy)).age, 42);
}

TEST(Documents, OutliveTheNextParseOfTheirThread) {
    const Document first = Document::parse(R"({"name":"the first name, not a short one","age":1})");
    const Document second = Document::parse(R"({"name":"another name, about as long as it","age":2})");

    modelling::Owner owner;
    json::decode(first, owner);

    EXPECT_EQ(owner.name, "the first name, not a short one");
    EXPECT_EQ(owner.age, 1);
}

TEST(Documents, MayBeParsedReadAndDroppedOnSeveralThreads) {
    const Document shared = Document::parse(R"({"name":"shared","age":7})");
    std::vector<std::thread> threads;
    std::vector<std::int64_t> sums(4);
    for (std::size_t i = 0; i < sums.size(); ++i) {
        threads.emplace_back([&sums, i, shared] {
            for (std::int64_t round = 0; round < 200; ++round) {
                modelling::Owner owner;
                json::decode(shared, owner);
                sums[i] += owner.age + json::decode<modelling::Owner>("{\"age\":" + std::to_string(round) + "}").age;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(sums, std::vector<std::int64_t>(4, 200 * 7 + 199 * 100));
}

TEST(Documents, ALargeOneAndSmallOnesFollowEachOther) {
    const std::string large = "{\"name\":\"" + std::string(3 << 20, 'x') + "\",\"age\":1}";
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(json::decode<modelling::Owner>(large).name->size(), std::size_t{3} << 20);
        EXPECT_EQ(json::decode<modelling::Owner>(R"({"age":5})").age, 5);
    }
}

} // namespace quorvane
