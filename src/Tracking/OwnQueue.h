#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "Platform/SerialQueue.h"

namespace quorvane {

/// Runs @p work on the caller's thread, as the serial queue @p label does.
template <class Work>
void onQueue(std::string_view label, Work&& work) {
    platform::SerialQueue(std::string(label)).sync(std::forward<Work>(work));
}

} // namespace quorvane
