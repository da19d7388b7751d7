// Decodes any text as any model. What decodes must encode, in both styles, and read back as the same.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "API/JSONResponseList.h"
#include "API/QVAccessInfo.h"
#include "API/QVAuthResponse.h"
#include "API/QVAuthTokenResponse.h"
#include "Cache/Entry.h"
#include "Cache/Transformer.h"
#include "JSON/CodingErrors.h"
#include "JSON/JSON.h"
#include "Models/QVConfig.h"
#include "Models/QVGeofence.h"
#include "Models/QVGeofenceGeometry.h"
#include "Models/QVRegion.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Places/QVPlace.h"
#include "Search/QVRoutes.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"
#include "Tracking/QVContext.h"
#include "Tracking/QVTrackingResponse.h"
#include "fuzz/Require.h"

namespace {

using namespace quorvane;
using fuzz::require;

template <class Model>
void use(const Model&) {}

void use(const QVTask& task) {
    require(task.distanceText(true).ends_with(" miles away"), "a distance text is cut", task.distanceText(true));
}

void use(const QuorvaneTrackingOptions& options) {
    require(options.description().ends_with("\n"), "a description is cut", options.description());
}

template <class Model>
void check(std::string text) {
    Model model;
    try {
        json::decode(json::Document::parse(std::move(text)), model);
    } catch (const json::DecodingError&) {
        return;
    }
    use(model);
    const std::string encoded = json::encode(model);
    require(json::encode(json::decode<Model>(encoded)) == encoded, "reads back as another", encoded);
    const std::string pretty = json::encode(model, json::Style::pretty);
    require(json::encode(json::decode<Model>(pretty)) == encoded, "reads back as another when pretty", pretty);
}

// The first byte of an input chooses by its place here: the corpus knows this order, so new models go to the end.
constexpr void (*checks[])(std::string) = {
    &check<QVTask>,
    &check<QVTaskResponse>,
    &check<QVPlace>,
    &check<QVAddress>,
    &check<QVChain>,
    &check<QVTrackingResponse>,
    &check<QVContext>,
    &check<QVRoutes>,
    &check<QuorvaneTrackingOptions>,
    &check<QVGeofence>,
    &check<QVCircleGeometry>,
    &check<QVPolygonGeometry>,
    &check<QVConfig>,
    &check<QVAnswer>,
    &check<QVCoordinate>,
    &check<QVEstimatedTime>,
    &check<QVEvent>,
    &check<QVGeofenceGeometry>,
    &check<QVKeyedListPointer>,
    &check<QVOwners>,
    &check<QVPhotoCaptureOptions>,
    &check<QVQuestion>,
    &check<QVRegion>,
    &check<QVReward>,
    &check<QVRewardBarcode>,
    &check<QVRewardMessage>,
    &check<QVRoute>,
    &check<QVRouteDistance>,
    &check<QVRouteDuration>,
    &check<QVScoreInterval>,
    &check<QVSegment>,
    &check<QVTaskResponseCount>,
    &check<QVUser>,
    &check<QVUserInsights>,
    &check<QVUserInsightsLocation>,
    &check<QVUserInsightsState>,
    &check<QVAuthResponse>,
    &check<QVAuthTokenResponse>,
    &check<QVAccessInfo>,
    &check<EmptyResponse>,
    &check<JSONResponseList<QVTask>>,
    &check<JSONResponseList<QVPlace>>,
    &check<QVCache::Entry<std::string, std::shared_ptr<QVPlace>>>,
    &check<QVCache::TypeWrapper<std::shared_ptr<QVPlace>>>,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0) {
        checks[(data[0] - std::size_t{'A'}) % std::size(checks)](
            std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    }
    return 0;
}
