#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <tuple>
#include <vector>

#include "Platform/Precondition.h"

namespace quorvane {

/// Keeps what a completion was called with, call by call. The completion may outlive this object.
template <class... Arguments>
class Calls {
public:
    using Call = std::tuple<Arguments...>;

    /// The completion to pass.
    [[nodiscard]] auto record() const {
        return [kept = calls](const Arguments&... arguments) { kept->emplace_back(arguments...); };
    }

    [[nodiscard]] std::size_t count() const { return calls->size(); }

    /// The call with that number, which must have come.
    [[nodiscard]] const Call& operator[](std::size_t number) const {
        QV_PRECONDITION(number < calls->size(), "the completion must have been called");
        return (*calls)[number];
    }

    /// An argument of the first call.
    template <std::size_t index>
    [[nodiscard]] const auto& first() const {
        return std::get<index>((*this)[0]);
    }

private:
    std::shared_ptr<std::vector<Call>> calls = std::make_shared<std::vector<Call>>();
};

} // namespace quorvane
