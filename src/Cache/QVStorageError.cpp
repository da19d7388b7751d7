#include "Cache/QVStorageError.h"

#include <array>
#include <string>

namespace quorvane {

std::string_view nameOf(QVStorageError error) {
    static constexpr std::array<std::string_view, 7> names{
        "DEALLOCATED", "DECODING_FAILED",  "ENCODING_FAILED", "MALFORMED_FILE_ATTRIBUTES",
        "NOT_FOUND",   "TRANSFORMER_FAIL", "TYPE_NOT_MATCH"};
    return names.at(static_cast<std::size_t>(error));
}

QVStorageException::QVStorageException(QVStorageError theError)
    : std::runtime_error(std::string(nameOf(theError))), error(theError) {}

} // namespace quorvane
