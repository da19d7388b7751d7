#include <gtest/gtest.h>

#include "Facade/Quorvane.h"

namespace quorvane {
namespace {

TEST(Texts, TwelveStatusesAreToldByTheirNames) {
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::SUCCESS), "SUCCESS");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_BAD_REQUEST), "ERROR_BAD_REQUEST");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_FORBIDDEN), "ERROR_FORBIDDEN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_LOCATION), "ERROR_LOCATION");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_NETWORK), "ERROR_NETWORK");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_PAYMENT_REQUIRED), "ERROR_PAYMENT_REQUIRED");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_PERMISSIONS), "ERROR_PERMISSIONS");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_PUBLISHABLE_KEY), "ERROR_PUBLISHABLE_KEY");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_RATE_LIMIT), "ERROR_RATE_LIMIT");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_SERVER), "ERROR_SERVER");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_UNAUTHORIZED), "ERROR_UNAUTHORIZED");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_UNIMPLEMENTED), "ERROR_UNIMPLEMENTED");
}

TEST(Texts, TheOtherStatusesReadUnknown) {
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_NOT_FOUND), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_QUESTION_SUBMIT_FAILURE), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_SERIALIZATION), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_TASK_CLAIM_FAILURE), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_TASK_OUT_OF_RANGE), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(QVStatus::ERROR_UNKNOWN), "ERROR_UNKNOWN");
    EXPECT_EQ(Quorvane::fromStatus(static_cast<QVStatus>(99)), "ERROR_UNKNOWN");
}

TEST(Texts, LocationSourcesAreToldByTheirNames) {
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::BACKGROUND_LOCATION), "BACKGROUND_LOCATION");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::FOREGROUND_LOCATION), "FOREGROUND_LOCATION");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::GEOFENCE_ENTER), "GEOFENCE_ENTER");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::GEOFENCE_EXIT), "GEOFENCE_EXIT");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::MANUAL_LOCATION), "MANUAL_LOCATION");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::VISIT_ARRIVAL), "VISIT_ARRIVAL");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::VISIT_DEPARTURE), "VISIT_DEPARTURE");
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::UNKNOWN), "UNKNOWN");
}

TEST(Texts, ADwellHasNoTextOfItsOwn) {
    EXPECT_EQ(Quorvane::fromLocationSource(QVLocationSource::GEOFENCE_DWELL), "UNKNOWN");
}

} // namespace
} // namespace quorvane
