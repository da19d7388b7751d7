#include "Tasks/Strings.h"

namespace quorvane {

std::string Strings::questionRequirement(std::size_t count) {
    return "I will have to answer " + std::to_string(count) + " question(s).";
}

std::string Strings::photoRequirement(std::size_t count) {
    return "I will have to take " + std::to_string(count) + " picture(s).";
}

} // namespace quorvane
