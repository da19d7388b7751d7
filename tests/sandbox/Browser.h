#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/AnyCodable.h"
#include "sandbox/Program.h"
#include "support/ScratchDirectory.h"

namespace quorvane::sandbox::test {

/// Chromium without a window, driven over WebDriver's protocol. It keeps its files in a folder of its own, which is
/// removed at the end. Whatever goes wrong is a `std::runtime_error` with the driver's sentence.
class Browser {
public:
    Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser();

    void open(const std::string& address);
    /// Pixels of the page, and the colours that the user asks for: "light" or "dark".
    void show(int width, int height, const std::string& scheme);

    /// What a function with this body returns.
    [[nodiscard]] AnyCodable run(const std::string& script) const;
    [[nodiscard]] std::string text(const std::string& expression) const;
    [[nodiscard]] bool is(const std::string& expression) const;
    /// Waits until an expression is true, for a minute at most; false when it never is.
    [[nodiscard]] bool comesTrue(const std::string& expression) const;

    /// As a user does, on the first element that a CSS selector finds.
    void click(const std::string& selector) const;
    /// Presses the button of the mouse so many pixels from the middle of an element, moves it by (@p dx, @p dy) and
    /// lets it go.
    void drag(const std::string& selector, int x, int y, int dx, int dy) const;
    /// In place of what stood there.
    void type(const std::string& selector, const std::string& text) const;

    /// What the page has reported to the console since the last call.
    [[nodiscard]] std::vector<std::string> console() const;

private:
    AnyCodable call(const std::string& method, const std::string& path, const AnyCodable::Dictionary& body = {}) const;
    [[nodiscard]] std::string element(const std::string& selector) const;

    quorvane::testing::ScratchDirectory folder;
    std::unique_ptr<Program> driver;
    int port = 0;
    /// "/session/..."
    std::string session;
};

} // namespace quorvane::sandbox::test
