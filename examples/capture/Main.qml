import QtQuick

Window {
    id: window

    required property QtObject host

    width: 360
    height: 640
    visible: true
    title: qsTr("Camera screens")
    color: "#f4f6f8"

    component Choice: Rectangle {
        id: choice

        property alias text: label.text
        signal chosen

        width: 240
        height: 52
        radius: 12
        color: touch.pressed ? "#0b4f8a" : "#1267b1"
        activeFocusOnTab: true
        border.width: activeFocus ? 3 : 0

        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.onPressAction: chosen()
        Keys.onReturnPressed: chosen()
        Keys.onSpacePressed: chosen()

        Text {
            id: label
            anchors.centerIn: parent
            color: "white"
            font.pixelSize: 17
        }

        TapHandler {
            id: touch
            onTapped: choice.chosen()
        }
    }

    Column {
        anchors.centerIn: parent
        spacing: 16

        Choice {
            text: qsTr("Scan a barcode")
            onChosen: window.host.scan()
        }

        Choice {
            text: qsTr("Take a photo")
            onChosen: window.host.takePhoto()
        }

        Text {
            width: 240
            height: 80
            wrapMode: Text.WrapAnywhere
            horizontalAlignment: Text.AlignHCenter
            text: window.host.result
        }
    }
}
