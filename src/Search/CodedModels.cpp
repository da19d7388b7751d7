#include "JSON/ModelCoding.h"
#include "Search/QVRoute.h"
#include "Search/QVRouteDistance.h"
#include "Search/QVRouteDuration.h"
#include "Search/QVRoutes.h"

QV_JSON_MODEL(quorvane::QVRoute);
QV_JSON_MODEL(quorvane::QVRouteDistance);
QV_JSON_MODEL(quorvane::QVRouteDuration);
QV_JSON_MODEL(quorvane::QVRoutes);
