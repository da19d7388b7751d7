#include "API/JSONResponseList.h"
#include "JSON/ModelCoding.h"

QV_JSON_MODEL(quorvane::EmptyResponse);
