#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <memory>
#include <optional>
#include <vector>

#include "Internal/Views/InterfaceFile.h"
#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/RootView.h"

QT_BEGIN_NAMESPACE
class QPropertyAnimation;
QT_END_NAMESPACE

namespace quorvane::capture {

class OwnWindow;

/// A screen and its life: loaded when it is first shown, shown in an item, over a window or in a window of its own, and
/// taken away by `dismiss`, with the last pointer to it, or with what it is shown in. Main thread only.
///
/// Handlers that call a host hold `shared_from_this()` meanwhile: the host may let go of the screen.
class ViewController : public std::enable_shared_from_this<ViewController> {
public:
    static constexpr int transitionMilliseconds = 250;

    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;
    /// What is shown goes at once, without a call of the hooks below.
    virtual ~ViewController();

    /// Shows the screen all over @p item, whose size it follows. A screen that is shown stays where it is.
    void present(QQuickItem& item, bool animated);
    void present(QQuickWindow& window, bool animated);
    /// In a window of its own.
    void present(bool animated);
    /// Takes the screen away. While it fades it takes no input.
    virtual void dismiss(bool animated);
    /// Goes without a word to anyone, and lets go of its devices: the platform that they work on ends.
    void leave();
    /// From `present` to `dismiss`.
    [[nodiscard]] bool isPresented() const { return presented; }

    /// The whole screen; loads it where it is not loaded.
    [[nodiscard]] QQuickItem& view();
    [[nodiscard]] QQuickWindow* window() const { return root == nullptr ? nullptr : root->window(); }

protected:
    /// @p theFile fills the screen; none leaves it empty.
    explicit ViewController(std::optional<InterfaceFile> theFile);

    /// The interface file's outermost item; null where there is no file. Only once the view is loaded.
    [[nodiscard]] QQuickItem* content() const { return items.get(); }
    /// Receives signals for this object, and no more once it goes; its items live a little longer.
    QObject receiver;

    /// How often the screen was shown: tells one showing from another.
    [[nodiscard]] int showing() const { return showings; }

    /// Lays out once more, before the next picture is drawn.
    void setNeedsLayout();

    /// Once, before the screen is shown for the first time, and with the size that it will have.
    virtual void viewDidLoad() {}
    /// Before each showing.
    virtual void viewWillAppear() {}
    /// The screen has its new size, and what fills it has not.
    virtual void viewWillLayoutSubviews() {}
    virtual void viewDidLayoutSubviews() {}
    /// The screen is gone, after `dismiss` or with what it was shown in.
    virtual void viewDidDisappear() {}
    /// The devices that the screen works with are not to be used any more.
    virtual void releaseDevices() {}
    /// The user closes the screen's own window: dismisses the screen. What is left of it then goes at once.
    virtual void closeRequested() { dismiss(false); }

private:
    struct HideWindow {
        void operator()(OwnWindow* window) const;
    };

    /// Ends a showing that is on its way out. False for a screen that is presented.
    bool canPresent();
    void loadView();
    void layOut();
    /// Of all screens.
    void becomeTopmost();
    /// The screen that was shown next in the same item; null for the topmost one.
    [[nodiscard]] ViewController* nextAbove() const;
    /// What lies behind the screen takes no input meanwhile: pointer handlers see what is accepted in front of them,
    /// too.
    void disableWhatLiesBehind();
    void disable(QQuickItem& item);
    /// But for what the host has enabled or disabled since. What lies behind @p above, too, stays disabled until that
    /// goes.
    void enableWhatLiesBehind(ViewController* above);
    void closeOwnWindow();
    void fade(double from, double to);
    void fadeOut();
    void remove();
    void wasRemoved();
    void endShowing();
    void giveFocusBack();

    /// All screens that work on the platform in use, this one among them.
    const std::weak_ptr<std::vector<ViewController*>> screens;
    const std::optional<InterfaceFile> file;
    std::unique_ptr<OwnWindow, HideWindow> ownWindow;
    ItemPointer<RootView> root;
    ItemPointer<QQuickItem> items;
    QPointer<QQuickItem> parent;
    /// By this screen, and as it left them.
    std::vector<QPointer<QQuickItem>> disabled;
    QPointer<QQuickItem> focusedBefore;
    QPointer<QPropertyAnimation> transition;
    int showings = 0;
    bool presented = false;
    /// In a scene: presented, or on its way out.
    bool shown = false;
};

} // namespace quorvane::capture
