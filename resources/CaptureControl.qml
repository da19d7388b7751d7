import QtQuick

// What every button over a camera's picture does: it is reached by touch and keyboard, and has a name for those who
// do not see it. What it looks like is up to those who use it.
Item {
    id: control

    property string text
    // What those who do not see it should know beside its name.
    property string description
    readonly property bool isPressed: touch.pressed
    signal tapped

    function tap() {
        if (enabled) {
            tapped()
        }
    }

    // A key that is held down counts once.
    function press(event) {
        if (!event.isAutoRepeat) {
            tap()
        }
    }

    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: description
    Accessible.focusable: true
    Accessible.onPressAction: tap()

    Keys.onReturnPressed: (event) => press(event)
    Keys.onEnterPressed: (event) => press(event)
    Keys.onSpacePressed: (event) => press(event)

    TapHandler {
        id: touch
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: control.tap()
    }
}
