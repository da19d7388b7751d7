#pragma once

#include <memory>
#include <string>
#include <vector>

#include "JSON/AnyCodable.h"
#include "support/DevTools.h"
#include "support/ScratchDirectory.h"

namespace quorvane::testing {

/// One page in Chromium without a window. It keeps its files in a folder of its own, which is removed at the end.
/// Whatever goes wrong is a `std::runtime_error`.
class Browser {
public:
    Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser();

    void open(const std::string& address);
    /// Pixels of the page, and the colours that the user asks for: "light" or "dark".
    void show(int width, int height, const std::string& scheme);

    /// The text of what a JavaScript expression gives.
    [[nodiscard]] std::string text(const std::string& expression);
    [[nodiscard]] bool is(const std::string& expression);
    /// Waits until an expression is true, for a minute at most; false when it never is.
    [[nodiscard]] bool comesTrue(const std::string& expression);

    /// As a user does, on the first element that a CSS selector finds, after bringing it into view.
    void click(const std::string& selector);
    /// Presses the button of the mouse so many pixels from the middle of an element, moves it by (@p dx, @p dy) and
    /// lets it go.
    void drag(const std::string& selector, int x, int y, int dx, int dy);
    /// Presses and lets go a key: its name and its number as the DOM has them, and the text that it writes.
    void press(const std::string& key, int code, const std::string& text = "");
    /// In place of what stands in a field.
    void type(const std::string& selector, const std::string& text);
    /// The same, and then the Enter key.
    void enter(const std::string& selector, const std::string& text);
    /// Picks the option with this value.
    void choose(const std::string& selector, const std::string& value);

    /// The errors that the page has run into since the last call, and what it has written to the console.
    [[nodiscard]] std::vector<std::string> complaints();

private:
    [[nodiscard]] AnyCodable evaluate(const std::string& expression);
    void mouse(const std::string& type, double x, double y, int buttons);

    ScratchDirectory folder;
    std::unique_ptr<DevTools> tools;
};

} // namespace quorvane::testing
