#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"
#include "Places/QVAddress.h"
#include "Places/QVChain.h"
#include "Places/QVPlace.h"

QV_JSON_MODEL(quorvane::QVAddress);
QV_JSON_MODEL(quorvane::QVChain);
QV_JSON_MODEL(quorvane::QVPlace);
