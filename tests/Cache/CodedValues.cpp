#include "Cache/Entry.h"
#include "Cache/Transformer.h"
#include "JSON/ModelCoding.h"

// What the tests store: a text, a number, an entry of them.
QV_JSON_MODEL(quorvane::QVCache::TypeWrapper<std::string>);
QV_JSON_MODEL(quorvane::QVCache::TypeWrapper<std::int64_t>);
QV_JSON_MODEL(quorvane::QVCache::TypeWrapper<double>);
QV_JSON_MODEL(quorvane::QVCache::Entry<std::string, std::string>);
