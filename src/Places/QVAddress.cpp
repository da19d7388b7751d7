#include "Places/QVAddress.h"

#include <array>
#include <numeric>
#include <string_view>

namespace quorvane {

std::string QVAddress::formatAddress(const QVAddress& address) {
    const auto part = [](const std::optional<std::string>& text) {
        return text ? std::string_view(*text) : std::string_view();
    };
    const std::array<std::string_view, 11> parts = {part(address.address1),   address.address2 ? " " : "",
                                                    part(address.address2),   " ",
                                                    part(address.city),       ", ",
                                                    part(address.state),      " ",
                                                    part(address.postalCode), " ",
                                                    part(address.country)};
    std::string text;
    text.reserve(std::accumulate(parts.begin(), parts.end(), std::size_t{0},
                                 [](std::size_t sum, std::string_view one) { return sum + one.size(); }));
    for (const std::string_view one : parts) {
        text += one;
    }
    return text;
}

void QVAddress::willDecode() {
    coordinate = platform::Coordinate::invalid;
}

void QVAddress::didDecode() {
    formattedAddress = formatAddress(*this);
}

} // namespace quorvane
