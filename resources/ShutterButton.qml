import QtQuick

CaptureControl {
    id: button

    implicitWidth: 76
    implicitHeight: 76

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: "#4d000000"
        border.width: button.activeFocus ? 6 : 4
        border.color: button.enabled ? "#ffffff" : "#80ffffff"
    }

    Rectangle {
        anchors.centerIn: parent
        width: button.isPressed ? 52 : 58
        height: width
        radius: width / 2
        color: button.enabled ? "#ffffff" : "#59ffffff"
    }
}
