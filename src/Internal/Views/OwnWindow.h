#pragma once

#include <QQuickWindow>
#include <functional>

namespace quorvane::capture {

/// The window of a screen that is shown in none of the host's.
class OwnWindow final : public QQuickWindow {
public:
    /// @p theOnClose is called when the user closes the window, and when the application quits.
    explicit OwnWindow(std::function<void()> theOnClose);

    /// It is called no more.
    void forgetScreen() { onClose = nullptr; }

protected:
    /// The window always closes, or the application could not quit.
    void closeEvent(QCloseEvent* event) override;

private:
    std::function<void()> onClose;
};

} // namespace quorvane::capture
