#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Claims tasks and submits their answers.
class QVTaskService : public SharedService<QVTaskService> {};

} // namespace quorvane
