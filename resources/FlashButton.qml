import QtQuick
import Quorvane.Capture

CaptureControl {
    id: button

    property bool selected: false

    implicitWidth: 48
    implicitHeight: 48

    Accessible.checkable: true
    Accessible.checked: selected

    Picture {
        anchors.fill: parent
        radius: height / 2
        color: button.isPressed ? "#73ffffff" : "#66000000"
        borderWidth: button.activeFocus ? 3 : 1
        borderColor: button.activeFocus ? "#ffffff" : "#a6ffffff"
    }

    Picture {
        anchors.centerIn: parent
        width: 24
        height: 24
        image: button.selected ? "flash_on" : "flash_off"
    }
}
