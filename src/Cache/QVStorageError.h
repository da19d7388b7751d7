#pragma once

#include <stdexcept>
#include <string_view>

namespace quorvane {

/// Why the cache could not answer. Errors of the file system (`std::system_error`) and of JSON pass through beside it.
enum class QVStorageError {
    /// Declared for a cache that is gone, never raised.
    DEALLOCATED,
    /// Declared; what cannot be decoded passes through as the decoder's error.
    DECODING_FAILED,
    /// Declared; what cannot be encoded passes through as the encoder's error.
    ENCODING_FAILED,
    /// A file has no modification date.
    MALFORMED_FILE_ATTRIBUTES,
    /// Nothing in memory under the key, or no longer.
    NOT_FOUND,
    /// Declared, never raised.
    TRANSFORMER_FAIL,
    /// Declared, never raised.
    TYPE_NOT_MATCH,
};

[[nodiscard]] std::string_view nameOf(QVStorageError error);

/// A storage error as an exception. Never leaves the library.
class QVStorageException : public std::runtime_error {
public:
    explicit QVStorageException(QVStorageError error);

    QVStorageError error;
};

} // namespace quorvane
