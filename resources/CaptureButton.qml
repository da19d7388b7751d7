import QtQuick
import Quorvane.Capture

// A button with a text in the user's own size of letters.
CaptureControl {
    id: button

    implicitWidth: Math.min(180, Math.max(88, label.implicitWidth + 40))
    implicitHeight: Math.max(48, label.implicitHeight + 24)

    Picture {
        anchors.fill: parent
        radius: height / 2
        color: button.isPressed ? "#73ffffff" : "#40000000"
        borderWidth: button.activeFocus ? 3 : 1
        borderColor: button.activeFocus ? "#ffffff" : "#a6ffffff"
    }

    Text {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, button.width - 16)
        elide: Text.ElideRight
        text: button.text
        color: "white"
        renderType: Text.NativeRendering
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
