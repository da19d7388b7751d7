#include "Places/QVAddress.h"

namespace quorvane {

std::string QVAddress::formatAddress(const QVAddress& address) {
    const auto textOf = [](const std::optional<std::string>& part) { return part.value_or(std::string()); };
    std::string text = textOf(address.address1);
    if (address.address2) {
        text += " " + *address.address2;
    }
    return text + " " + textOf(address.city) + ", " + textOf(address.state) + " " + textOf(address.postalCode) + " " +
           textOf(address.country);
}

void QVAddress::willDecode() {
    coordinate = platform::Coordinate::invalid;
}

void QVAddress::didDecode() {
    formattedAddress = formatAddress(*this);
}

} // namespace quorvane
