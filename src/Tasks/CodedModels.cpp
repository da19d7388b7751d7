#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"
#include "Tasks/QVAnswer.h"
#include "Tasks/QVEstimatedTime.h"
#include "Tasks/QVKeyedListPointer.h"
#include "Tasks/QVPhotoCaptureOptions.h"
#include "Tasks/QVQuestion.h"
#include "Tasks/QVReward.h"
#include "Tasks/QVRewardBarcode.h"
#include "Tasks/QVRewardMessage.h"
#include "Tasks/QVScoreInterval.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"
#include "Tasks/QVTaskResponseCount.h"

QV_JSON_MODEL(quorvane::QVAnswer);
QV_JSON_MODEL(quorvane::QVEstimatedTime);
QV_JSON_MODEL(quorvane::QVKeyedListPointer);
QV_JSON_MODEL(quorvane::QVPhotoCaptureOptions);
QV_JSON_MODEL(quorvane::QVQuestion);
QV_JSON_MODEL(quorvane::QVReward);
QV_JSON_MODEL(quorvane::QVRewardBarcode);
QV_JSON_MODEL(quorvane::QVRewardMessage);
QV_JSON_MODEL(quorvane::QVScoreInterval);
QV_JSON_MODEL(quorvane::QVTask);
QV_JSON_MODEL(quorvane::QVTaskResponse);
QV_JSON_MODEL(quorvane::QVTaskResponseCount);
