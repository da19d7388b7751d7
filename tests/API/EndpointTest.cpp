#include <limits>

#include <gtest/gtest.h>

#include "API/Endpoint.h"

namespace quorvane {
namespace {

TEST(Endpoint, MethodsStandInARequestLineInCapitals) {
    EXPECT_EQ(rawValue(RequestMethod::GET), "GET");
    EXPECT_EQ(rawValue(RequestMethod::POST), "POST");
    EXPECT_EQ(rawValue(RequestMethod::PUT), "PUT");
    EXPECT_EQ(rawValue(RequestMethod::DELETE), "DELETE");
}

TEST(Endpoint, ResponseFormatsStandInTheirOrder) {
    EXPECT_EQ(static_cast<int>(ResponseFormat::JSON), 0);
    EXPECT_EQ(static_cast<int>(ResponseFormat::TEXT), 1);
    EXPECT_EQ(static_cast<int>(ResponseFormat::NONE), 2);
}

TEST(Endpoint, ANewOneIsAGetWithoutBodyOrParametersThatAnswersJSON) {
    const EndpointFields fields;

    EXPECT_EQ(fields.method, RequestMethod::GET);
    EXPECT_EQ(fields.format, ResponseFormat::JSON);
    EXPECT_TRUE(fields.body.empty());
    EXPECT_TRUE(fields.parameters.empty());
    EXPECT_TRUE(fields.path.empty());
}

TEST(Endpoint, ATextParameterIsItself) {
    EXPECT_EQ(textOf(ParameterValue("a b")), "a b");
    EXPECT_EQ(textOf(ParameterValue("")), "");
}

TEST(Endpoint, AnIntegerParameterIsDecimal) {
    EXPECT_EQ(textOf(std::int64_t{1000}), "1000");
    EXPECT_EQ(textOf(std::int64_t{-5}), "-5");
    EXPECT_EQ(textOf(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(Endpoint, AWholeDoubleParameterKeepsItsPointAndZero) {
    EXPECT_EQ(textOf(46.0), "46.0");
    EXPECT_EQ(textOf(0.0), "0.0");
    EXPECT_EQ(textOf(-14.0), "-14.0");
}

TEST(Endpoint, ADoubleParameterIsTheShortestTextThatReadsBackTheSame) {
    EXPECT_EQ(textOf(46.0512345), "46.0512345");
    EXPECT_EQ(textOf(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(textOf(-14.5), "-14.5");
    EXPECT_EQ(textOf(0.00001), "1e-05");
}

TEST(Endpoint, ABoolParameterIsAWord) {
    EXPECT_EQ(textOf(true), "true");
    EXPECT_EQ(textOf(false), "false");
}

} // namespace
} // namespace quorvane
