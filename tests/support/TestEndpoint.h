#pragma once

#include "API/Endpoint.h"
#include "Models/QVConfig.h"

namespace quorvane {

/// A call of the data service that a test shapes as it likes.
struct TestEndpoint : Endpoint<QVConfig> {
    TestEndpoint() { path = "/test"; }
};

} // namespace quorvane
