import QtQuick
import Quorvane.Capture

CaptureControl {
    id: button

    implicitWidth: 76
    implicitHeight: 76

    Picture {
        anchors.fill: parent
        radius: width / 2
        color: "#4d000000"
        borderWidth: button.activeFocus ? 6 : 4
        borderColor: button.enabled ? "#ffffff" : "#80ffffff"
    }

    Picture {
        anchors.centerIn: parent
        width: button.isPressed ? 52 : 58
        height: width
        radius: width / 2
        color: button.enabled ? "#ffffff" : "#59ffffff"
    }
}
