#include "Internal/Views/ViewController.h"

#include <QPropertyAnimation>
#include <utility>

#include "Internal/Views/OwnWindow.h"

namespace quorvane::capture {

void ViewController::HideWindow::operator()(QQuickWindow* window) const {
    window->hide();
    window->deleteLater();
}

ViewController::ViewController(std::optional<InterfaceFile> theFile) : file(std::move(theFile)) {}

ViewController::~ViewController() {
    if (root) {
        root->layout = nullptr;
        root->removed = nullptr;
    }
    delete transition.data();
    enableWhatLiesBehind();
    if (shown) {
        giveFocusBack();
    }
}

QQuickItem& ViewController::view() {
    loadView();
    return *root;
}

void ViewController::loadView() {
    if (root) {
        return;
    }
    root.reset(new RootView);
    if (parent) {
        root->setSize(parent->size());
    }
    if (file) {
        items = file->instantiate();
        if (parent) {
            items->setSize(root->size());
        } else {
            root->setSize(items->size());
        }
        items->setParent(root.get());
        items->setParentItem(root.get());
        items->setFocus(true);
    }
    viewDidLoad();
    root->layout = [this] { layOut(); };
    root->removed = [this] { wasRemoved(); };
}

void ViewController::layOut() {
    viewWillLayoutSubviews();
    if (items) {
        items->setSize(root->size());
    }
    viewDidLayoutSubviews();
}

void ViewController::setNeedsLayout() {
    root->setNeedsLayout();
}

bool ViewController::canPresent() {
    if (!presented && shown) {
        // The host may present the screen anew when it hears that it is gone.
        remove();
    }
    return !presented;
}

void ViewController::present(QQuickItem& item, bool animated) {
    const std::shared_ptr<ViewController> self = shared_from_this();
    if (!canPresent()) {
        return;
    }
    parent = &item;
    presented = true;
    shown = true;
    const int showing = ++showings;
    loadView();
    viewWillAppear();
    if (showing != showings) {
        // The host has dismissed the screen and presented it anew meanwhile.
        return;
    }
    if (!presented || !parent) {
        remove();
        return;
    }
    const auto follow = [view = root.get(), &item] { view->setSize(item.size()); };
    QObject::connect(&item, &QQuickItem::widthChanged, root.get(), follow);
    QObject::connect(&item, &QQuickItem::heightChanged, root.get(), follow);
    follow();
    layOut();
    root->setEnabled(true);
    root->setVisible(true);
    root->setParentItem(&item);
    if (QQuickWindow* const shownIn = root->window()) {
        focusedBefore = shownIn->activeFocusItem();
    }
    disableWhatLiesBehind();
    if (root->window() != nullptr) {
        root->forceActiveFocus(Qt::OtherFocusReason);
    }
    root->setOpacity(1);
    if (animated) {
        fade(0, 1);
    }
}

void ViewController::present(QQuickWindow& window, bool animated) {
    // A window that was not shown yet has not passed its size on.
    if (window.contentItem()->size().isEmpty()) {
        window.contentItem()->setSize(window.size());
    }
    present(*window.contentItem(), animated);
}

void ViewController::present(bool animated) {
    const std::shared_ptr<ViewController> self = shared_from_this();
    if (!canPresent()) {
        return;
    }
    ownWindow.reset(new OwnWindow([this] { closeRequested(); }));
    present(*ownWindow, animated);
    if (presented) {
        ownWindow->show();
    }
}

void ViewController::dismiss(bool animated) {
    if (!presented) {
        return;
    }
    presented = false;
    root->setEnabled(false);
    if (animated && root->window() != nullptr) {
        fadeOut();
    } else {
        remove();
    }
}

void ViewController::disableWhatLiesBehind() {
    for (QQuickItem* const sibling : parent->childItems()) {
        if (sibling != root.get() && sibling->isEnabled()) {
            sibling->setEnabled(false);
            disabled.emplace_back(sibling);
        }
    }
}

void ViewController::enableWhatLiesBehind() {
    for (const QPointer<QQuickItem>& sibling : std::exchange(disabled, {})) {
        if (sibling) {
            sibling->setEnabled(true);
        }
    }
}

void ViewController::fade(double from, double to) {
    if (transition) {
        transition->stop();
    }
    transition = new QPropertyAnimation(root.get(), "opacity", root.get());
    transition->setDuration(transitionMilliseconds);
    transition->setStartValue(from);
    transition->setEndValue(to);
    transition->start(QAbstractAnimation::DeleteWhenStopped);
}

void ViewController::fadeOut() {
    fade(root->opacity(), 0);
    QObject::connect(transition, &QAbstractAnimation::finished, &receiver, [this] { remove(); });
}

void ViewController::remove() {
    const std::shared_ptr<ViewController> self = shared_from_this();
    // The host hears of it once the item has left, for it may present the screen again at once.
    root->removed = nullptr;
    root->setParentItem(nullptr);
    root->removed = [this] { wasRemoved(); };
    wasRemoved();
}

void ViewController::giveFocusBack() {
    if (focusedBefore) {
        focusedBefore->forceActiveFocus(Qt::OtherFocusReason);
    }
    focusedBefore = nullptr;
}

void ViewController::wasRemoved() {
    if (!shown) {
        return;
    }
    const std::shared_ptr<ViewController> self = shared_from_this();
    shown = false;
    presented = false;
    if (transition) {
        transition->stop();
    }
    if (parent) {
        parent->disconnect(root.get());
    }
    parent = nullptr;
    root->setVisible(false);
    enableWhatLiesBehind();
    ownWindow.reset();
    giveFocusBack();
    viewDidDisappear();
}

} // namespace quorvane::capture
