#include "API/Endpoint.h"

#include <array>
#include <type_traits>

#include "JSON/NumberText.h"

namespace quorvane {

std::string_view rawValue(RequestMethod method) {
    static constexpr std::array<std::string_view, 4> names{"GET", "POST", "PUT", "DELETE"};
    return names.at(static_cast<std::size_t>(method));
}

std::string textOf(const ParameterValue& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::string>) {
                return held;
            } else if constexpr (std::is_same_v<Held, bool>) {
                return held ? "true" : "false";
            } else if constexpr (std::is_same_v<Held, double>) {
                return json::textOf(held);
            } else {
                return std::to_string(held);
            }
        },
        value);
}

} // namespace quorvane
