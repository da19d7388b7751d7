#include <gtest/gtest.h>

#include "Models/DesiredAccuracyName.h"

namespace quorvane {
namespace {

TEST(DesiredAccuracyName, IsThatOfTheCase) {
    EXPECT_EQ(nameOf(QVDesiredAccuracy::NONE), "NONE");
    EXPECT_EQ(nameOf(QVDesiredAccuracy::LOW), "LOW");
    EXPECT_EQ(nameOf(QVDesiredAccuracy::MEDIUM), "MEDIUM");
    EXPECT_EQ(nameOf(QVDesiredAccuracy::HIGH), "HIGH");
}

TEST(DesiredAccuracyName, OutsideTheEnumerationThereIsNone) {
    EXPECT_EQ(nameOf(static_cast<QVDesiredAccuracy>(4)), std::nullopt);
    EXPECT_EQ(nameOf(static_cast<QVDesiredAccuracy>(-1)), std::nullopt);
}

} // namespace
} // namespace quorvane
