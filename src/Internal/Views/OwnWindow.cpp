#include "Internal/Views/OwnWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <utility>

namespace quorvane::capture {
namespace {

constexpr QSize usualSize{412, 732};

} // namespace

OwnWindow::OwnWindow(std::function<void()> theCloseRequested) : closeRequested(std::move(theCloseRequested)) {
    setTitle(QGuiApplication::applicationDisplayName());
    setColor(Qt::black);
    resize(usualSize);
}

void OwnWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    closeRequested();
}

} // namespace quorvane::capture
