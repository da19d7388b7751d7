#include "Internal/Views/ViewController.h"

#include <QPropertyAnimation>
#include <algorithm>
#include <utility>

#include "Internal/Views/OwnWindow.h"
#include "Platform/Precondition.h"
#include "Platform/Registry.h"

namespace quorvane::capture {
namespace {

/// The screens that are there; those that are shown in the order of their showing. They leave before the platform that
/// they work on goes.
struct Screens {
    Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    ~Screens() {
        while (!all->empty()) {
            ViewController* const last = all->back();
            all->pop_back();
            last->leave();
        }
    }

    const std::shared_ptr<std::vector<ViewController*>> all = std::make_shared<std::vector<ViewController*>>();
};

} // namespace

void ViewController::HideWindow::operator()(OwnWindow* window) const {
    // It has its handle for a while, and is closed with the application as long as it has.
    window->forgetScreen();
    window->hide();
    window->deleteLater();
}

ViewController::ViewController(std::optional<InterfaceFile> theFile)
    : screens(platform::shared<Screens>().all), file(std::move(theFile)) {
    screens.lock()->push_back(this);
}

ViewController::~ViewController() {
    ViewController* const above = nextAbove();
    if (const auto all = screens.lock()) {
        all->erase(std::remove(all->begin(), all->end(), this), all->end());
    }
    if (root) {
        root->layout = nullptr;
        root->removed = nullptr;
    }
    delete transition.data();
    if (shown) {
        enableWhatLiesBehind(above);
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
        QV_PRECONDITION(items != nullptr, "a screen's interface file must hold an item");
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
    const int mine = ++showings;
    loadView();
    viewWillAppear();
    if (mine != showings) {
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
    becomeTopmost();
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
    ownWindow.reset(new OwnWindow([this] { closeOwnWindow(); }));
    present(*ownWindow, animated);
    // The host may have presented it elsewhere meanwhile.
    if (presented && ownWindow) {
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

void ViewController::closeOwnWindow() {
    const std::shared_ptr<ViewController> self = shared_from_this();
    if (presented) {
        closeRequested();
    }
    // Unless the host has presented it anew, or without an animation.
    if (!presented && shown) {
        remove();
    }
}

void ViewController::becomeTopmost() {
    if (const auto all = screens.lock()) {
        const auto own = std::find(all->begin(), all->end(), this);
        if (own != all->end()) {
            std::rotate(own, own + 1, all->end());
        }
    }
}

ViewController* ViewController::nextAbove() const {
    const auto all = screens.lock();
    if (!all || !parent) {
        return nullptr;
    }
    const auto own = std::find(all->begin(), all->end(), this);
    const auto lies = [this](const ViewController* other) {
        return other != this && other->shown && other->parent == parent;
    };
    const auto found = std::find_if(own, all->end(), lies);
    return found == all->end() ? nullptr : *found;
}

void ViewController::disableWhatLiesBehind() {
    for (QQuickItem* const sibling : parent->childItems()) {
        if (sibling != root.get() && sibling->isEnabled()) {
            sibling->setEnabled(false);
            disable(*sibling);
        }
    }
}

void ViewController::disable(QQuickItem& item) {
    disabled.emplace_back(&item);
    QObject::connect(&item, &QQuickItem::enabledChanged, &receiver, [this, changed = &item] {
        QObject::disconnect(changed, &QQuickItem::enabledChanged, &receiver, nullptr);
        disabled.erase(std::remove(disabled.begin(), disabled.end(), changed), disabled.end());
    });
}

void ViewController::enableWhatLiesBehind(ViewController* above) {
    for (const QPointer<QQuickItem>& sibling : std::exchange(disabled, {})) {
        if (!sibling) {
            continue;
        }
        QObject::disconnect(sibling, &QQuickItem::enabledChanged, &receiver, nullptr);
        if (above != nullptr) {
            above->disable(*sibling);
        } else {
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
    endShowing();
    viewDidDisappear();
}

void ViewController::endShowing() {
    shown = false;
    presented = false;
    if (transition) {
        transition->stop();
    }
    if (parent) {
        parent->disconnect(root.get());
    }
    root->setVisible(false);
    enableWhatLiesBehind(nextAbove());
    parent = nullptr;
    ownWindow.reset();
    giveFocusBack();
}

void ViewController::leave() {
    // The host may let go of the screen when it hears from an item of its own.
    const std::shared_ptr<ViewController> self = weak_from_this().lock();
    if (shown) {
        root->removed = nullptr;
        root->setParentItem(nullptr);
        endShowing();
    }
    releaseDevices();
    items = nullptr;
    root = nullptr;
}

} // namespace quorvane::capture
