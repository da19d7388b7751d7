import QtQuick

// A button with a text.
CaptureControl {
    id: button

    implicitWidth: Math.max(88, label.implicitWidth + 40)
    implicitHeight: 48

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: button.isPressed ? "#73ffffff" : "#40000000"
        border.width: button.activeFocus ? 3 : 1
        border.color: button.activeFocus ? "#ffffff" : "#a6ffffff"
    }

    Text {
        id: label
        anchors.centerIn: parent
        text: button.text
        color: "white"
        font.pixelSize: 17
        renderType: Text.NativeRendering
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
