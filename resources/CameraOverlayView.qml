import QtQuick
import Quorvane.Capture

FocusScope {
    id: overlay

    readonly property bool isWide: width > height
    readonly property real margin: 24
    // The controls stand in a bar, where the thumb is: below, or at the right of a wide screen.
    readonly property real barLength: isWide ? Math.max(136, cancel.width + 40) : 124
    // Above the framing image there is room for the bubble of a level, below it for a line of text.
    readonly property real bubbleRoom: 44
    readonly property real labelRoom: tilt.height + 28
    readonly property bool isFailed: state === "failed"
    // Told by a level.
    property bool isLevel: false
    readonly property real pixelRatio: Screen.devicePixelRatio

    // On a whole pixel of the device.
    function sharp(length) {
        return Math.round(length * pixelRatio) / pixelRatio
    }

    // As much of a length as lets the bubble, when it rests in the middle, lie on whole pixels.
    function aroundBubble(length) {
        const bubble = 40
        return Math.max(0, bubble + 2 * Math.floor((length - bubble) / 2 * pixelRatio) / pixelRatio)
    }

    // What is left for the framing image, which keeps the proportions of its drawing.
    readonly property real roomWidth: Math.max(0, width - 2 * margin - (isWide ? barLength : 0))
    readonly property real roomHeight: Math.max(0, height - bubbleRoom - labelRoom - (isWide ? 0 : barLength))
    readonly property real longest: 720
    readonly property real proportion: framing.implicitWidth > 0 ? framing.implicitWidth / framing.implicitHeight : 1

    width: 360
    height: 640

    Keys.onEscapePressed: (event) => cancel.press(event)
    Keys.onBackPressed: (event) => cancel.press(event)
    Keys.onTabPressed: cancel.forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: cancel.forceActiveFocus(Qt.BacktabFocusReason)

    Picture {
        id: bar

        x: overlay.isWide ? overlay.width - width : 0
        y: overlay.isWide ? 0 : overlay.height - height
        width: overlay.isWide ? overlay.barLength : overlay.width
        height: overlay.isWide ? overlay.height : overlay.barLength
        color: "#73000000"
    }

    Picture {
        id: framing
        objectName: "imageOverlay"

        width: overlay.aroundBubble(Math.min(overlay.roomWidth, overlay.roomHeight * overlay.proportion, overlay.longest))
        height: overlay.aroundBubble(width / overlay.proportion)
        x: overlay.sharp(overlay.margin + (overlay.roomWidth - width) / 2)
        y: overlay.sharp(overlay.bubbleRoom + (overlay.roomHeight - height) / 2)
        opacity: overlay.isFailed ? 0 : 1
    }

    Picture {
        id: tilt
        objectName: "tiltLabel"

        property alias text: tiltText.text

        x: overlay.sharp(overlay.margin + (overlay.roomWidth - width) / 2)
        y: framing.y + framing.height + 14
        width: Math.min(tiltText.implicitWidth + 28, overlay.roomWidth)
        height: Math.max(34, tiltText.implicitHeight + 14)
        radius: height / 2
        color: "#99000000"
        opacity: overlay.isFailed ? 0 : 1
        visible: false

        Accessible.role: Accessible.StaticText
        Accessible.name: text

        Text {
            id: tiltText
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 20)
            elide: Text.ElideRight
            color: "white"
            renderType: Text.NativeRendering
            text: overlay.isLevel ? qsTr("The phone is level") : qsTr("Hold the phone level")
            Accessible.ignored: true
        }
    }

    Picture {
        objectName: "failureLabel"

        anchors.centerIn: framing
        width: Math.min(failureText.implicitWidth + 36, overlay.roomWidth)
        height: failureText.implicitHeight + 24
        radius: 12
        color: "#b3000000"
        visible: overlay.isFailed

        Accessible.role: Accessible.AlertMessage
        Accessible.name: failureText.text

        Text {
            id: failureText
            anchors.fill: parent
            anchors.margins: 12
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.WordWrap
            color: "white"
            renderType: Text.NativeRendering
            text: qsTr("The camera cannot be used")
            Accessible.ignored: true
        }
    }

    ShutterButton {
        id: shutter
        objectName: "cameraButton"

        x: overlay.sharp(bar.x + (bar.width - width) / 2)
        y: overlay.sharp(bar.y + (bar.height - height) / 2)
        focus: true
        text: qsTr("Take photo")
        description: tilt.visible ? tilt.text : ""

        KeyNavigation.tab: flash
        KeyNavigation.backtab: cancel
    }

    FlashButton {
        id: flash
        objectName: "flashButton"

        x: overlay.sharp(overlay.isWide ? bar.x + (bar.width - width) / 2 : bar.width - overlay.margin - (cancel.width + width) / 2)
        y: overlay.sharp(overlay.isWide ? overlay.margin : bar.y + (bar.height - height) / 2)
        text: qsTr("Flash")

        KeyNavigation.tab: cancel
        KeyNavigation.backtab: shutter
    }

    CaptureButton {
        id: cancel
        objectName: "cancelButton"

        // Beside the shutter of a narrow screen there is not more room.
        width: overlay.isWide ? implicitWidth : Math.min(implicitWidth, (overlay.width - shutter.width) / 2 - overlay.margin - 12)
        x: overlay.sharp(overlay.isWide ? bar.x + (bar.width - width) / 2 : overlay.margin)
        y: overlay.sharp(overlay.isWide ? bar.height - overlay.margin - height : bar.y + (bar.height - height) / 2)
        text: qsTr("Cancel")

        KeyNavigation.tab: shutter
        KeyNavigation.backtab: flash
    }
}
