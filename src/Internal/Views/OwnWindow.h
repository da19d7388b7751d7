#pragma once

#include <QQuickWindow>
#include <functional>

namespace quorvane::capture {

/// The window of a screen that is shown in none of the host's.
class OwnWindow final : public QQuickWindow {
public:
    /// @p theClosing is called when the user closes the window, and when the application quits.
    explicit OwnWindow(std::function<void()> theClosing);

    /// It is called no more.
    void forgetScreen() { closing = nullptr; }

protected:
    /// The window always closes, or the application could not quit.
    void closeEvent(QCloseEvent* event) override;

private:
    std::function<void()> closing;
};

} // namespace quorvane::capture
