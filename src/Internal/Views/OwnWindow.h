#pragma once

#include <QQuickWindow>
#include <functional>

namespace quorvane::capture {

/// The window of a screen that is shown in none of the host's.
class OwnWindow final : public QQuickWindow {
public:
    explicit OwnWindow(std::function<void()> theCloseRequested);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    const std::function<void()> closeRequested;
};

} // namespace quorvane::capture
