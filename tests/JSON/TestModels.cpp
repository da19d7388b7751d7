#include "JSON/TestModels.h"

#include "JSON/ModelCoding.h"

QV_JSON_MODEL(quorvane::modelling::Owner);
QV_JSON_MODEL(quorvane::modelling::Everything);
QV_JSON_MODEL(quorvane::modelling::Tolerant);
QV_JSON_MODEL(quorvane::modelling::Shop);
QV_JSON_MODEL(quorvane::modelling::Address);
QV_JSON_MODEL(quorvane::modelling::Circle);
QV_JSON_MODEL(quorvane::modelling::Ring);
QV_JSON_MODEL(quorvane::modelling::Drawing);
QV_JSON_MODEL(quorvane::modelling::Hooked);
QV_JSON_MODEL(quorvane::modelling::Listing<quorvane::modelling::Owner>);
