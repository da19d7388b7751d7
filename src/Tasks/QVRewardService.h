#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Rewards of the service; offers no operation in this version.
class QVRewardService : public SharedService<QVRewardService> {};

} // namespace quorvane
