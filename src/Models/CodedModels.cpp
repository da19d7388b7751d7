#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"
#include "Models/QVCoordinate.h"
#include "Models/QVGeofence.h"
#include "Models/QVGeofenceGeometry.h"
#include "Models/QVOwners.h"
#include "Models/QVRegion.h"
#include "Models/QuorvaneTrackingOptions.h"

QV_JSON_MODEL(quorvane::QVCircleGeometry);
QV_JSON_MODEL(quorvane::QVCoordinate);
QV_JSON_MODEL(quorvane::QVGeofence);
QV_JSON_MODEL(quorvane::QVGeofenceGeometry);
QV_JSON_MODEL(quorvane::QVOwners);
QV_JSON_MODEL(quorvane::QVPolygonGeometry);
QV_JSON_MODEL(quorvane::QVRegion);
QV_JSON_MODEL(quorvane::QuorvaneTrackingOptions);
