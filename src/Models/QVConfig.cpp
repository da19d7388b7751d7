#include "Models/QVConfig.h"

#include "JSON/ModelCoding.h"

QV_JSON_MODEL(quorvane::QVConfig);
