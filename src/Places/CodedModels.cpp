#include "Cache/Entry.h"
#include "Cache/Transformer.h"
#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"
#include "Places/QVAddress.h"
#include "Places/QVChain.h"
#include "Places/QVPlace.h"

QV_JSON_MODEL(quorvane::QVAddress);
QV_JSON_MODEL(quorvane::QVChain);
QV_JSON_MODEL(quorvane::QVPlace);
QV_JSON_MODEL(quorvane::QVCache::Entry<std::string, std::shared_ptr<quorvane::QVPlace>>);
QV_JSON_MODEL(quorvane::QVCache::TypeWrapper<std::shared_ptr<quorvane::QVPlace>>);
