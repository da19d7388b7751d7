import QtQuick

// A button over a camera's picture, reachable by touch and keyboard.
Item {
    id: button

    property string text
    signal tapped

    function tap() {
        if (enabled) {
            tapped()
        }
    }

    implicitWidth: Math.max(88, label.implicitWidth + 40)
    implicitHeight: 48
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: tap()

    Keys.onReturnPressed: tap()
    Keys.onEnterPressed: tap()
    Keys.onSpacePressed: tap()

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: touch.pressed ? "#73ffffff" : "#40000000"
        border.width: button.activeFocus ? 3 : 1
        border.color: button.activeFocus ? "#ffffff" : "#a6ffffff"
    }

    Text {
        id: label
        anchors.centerIn: parent
        text: button.text
        color: "white"
        font.pixelSize: 17
        font.weight: Font.Medium
        Accessible.ignored: true
    }

    TapHandler {
        id: touch
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: button.tap()
    }
}
