#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Core/QVStatus.h"

namespace quorvane::tool {

/// The command line has a form that means nothing. `what()` is one sentence. The program ends with 2.
class WrongForm : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A command came to no good end: with a status of the library, or for a file or a port without one. `what()` is one
/// sentence. The program ends with 1.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& sentence) : std::runtime_error(sentence) {}
    Failure(QVStatus theStatus, const std::string& sentence) : std::runtime_error(sentence), status(theStatus) {}

    std::optional<QVStatus> status;
};

/// A command did what it was there for and found nothing. The program ends with 1 and says so only in the place of a
/// JSON document.
class NothingFound : public Failure {
public:
    using Failure::Failure;
};

/// What a status means to who reads it on a terminal: one sentence, without a full stop.
[[nodiscard]] std::string_view sentenceFor(QVStatus status);

} // namespace quorvane::tool
