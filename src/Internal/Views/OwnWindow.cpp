#include "Internal/Views/OwnWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <utility>

namespace quorvane::capture {
namespace {

constexpr QSize usualSize{412, 732};

} // namespace

OwnWindow::OwnWindow(std::function<void()> theOnClose) : onClose(std::move(theOnClose)) {
    setTitle(QGuiApplication::applicationDisplayName());
    setColor(Qt::black);
    resize(usualSize);
}

void OwnWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    // Of its own, for the call ends the showing and with it what the window knows.
    if (const std::function<void()> close = onClose) {
        close();
    }
}

} // namespace quorvane::capture
