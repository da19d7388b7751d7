#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"
#include "Tracking/QVContext.h"
#include "Tracking/QVEvent.h"
#include "Tracking/QVSegment.h"
#include "Tracking/QVTrackingResponse.h"
#include "Tracking/QVUser.h"
#include "Tracking/QVUserInsights.h"
#include "Tracking/QVUserInsightsLocation.h"
#include "Tracking/QVUserInsightsState.h"

QV_JSON_MODEL(quorvane::QVContext);
QV_JSON_MODEL(quorvane::QVEvent);
QV_JSON_MODEL(quorvane::QVSegment);
QV_JSON_MODEL(quorvane::QVTrackingResponse);
QV_JSON_MODEL(quorvane::QVUser);
QV_JSON_MODEL(quorvane::QVUserInsights);
QV_JSON_MODEL(quorvane::QVUserInsightsLocation);
QV_JSON_MODEL(quorvane::QVUserInsightsState);
