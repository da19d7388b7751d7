import QtQuick
import QtQuick.Shapes
import Quorvane.Capture

FocusScope {
    id: screen

    readonly property bool isWide: width > height
    readonly property real margin: 24
    // Beside the frame, or above and below it, there is room for some text and a button.
    readonly property real roomBeside: Math.max(160, cancel.width + 2 * margin)
    readonly property real roomAbove: Math.max(112, hint.implicitHeight + 2 * margin, cancel.height + 2 * margin)
    readonly property real longestFrame: isWide ? Math.min(height - 2 * margin, width - 2 * roomBeside)
                                                : Math.min(width - 2 * margin, height - 2 * roomAbove)
    readonly property real pixelRatio: Screen.devicePixelRatio

    // On a whole pixel of the device.
    function sharp(length) {
        return Math.round(length * pixelRatio) / pixelRatio
    }

    width: 360
    height: 640

    Keys.onEscapePressed: (event) => cancel.press(event)
    Keys.onBackPressed: (event) => cancel.press(event)

    Item {
        id: container
        objectName: "containerView"
        property string maskPath

        anchors.fill: parent

        // Made anew for each showing: a shape that comes back into a window crashes the toolkit's software renderer.
        Loader {
            anchors.fill: parent
            active: Window.window !== null

            sourceComponent: Shape {
                // Behind it is nothing yet when the screen opens, and the first frame is drawn without it sooner.
                asynchronous: true

                ShapePath {
                    fillColor: "#a6000000"
                    fillRule: ShapePath.OddEvenFill
                    strokeColor: "transparent"
                    strokeWidth: -1

                    PathSvg {
                        path: container.maskPath
                    }
                }
            }
        }
    }

    QtObject {
        id: frameWidth
        objectName: "scannerFrameWidth"
        property real constant: 270
    }

    Rectangle {
        id: frame
        objectName: "scannerFrameView"

        width: screen.sharp(Math.max(0, Math.min(frameWidth.constant, screen.longestFrame)))
        height: width
        x: screen.sharp((screen.width - width) / 2)
        y: screen.sharp((screen.height - height) / 2)
        color: "transparent"
    }

    Rectangle {
        id: scanline
        objectName: "scanlineView"

        property real sweep: 0.5

        x: frame.x + 12
        y: screen.sharp(frame.y + frame.height * sweep - height / 2)
        width: frame.width - 24
        height: 2
        color: "#ff453a"
        // Not quite opaque, like all that it lies on: opaque things are drawn in another way, which takes time to set up.
        opacity: 0.99
        visible: screen.state !== "failed"

        SequentialAnimation on sweep {
            running: screen.visible && screen.state === "scanning"
            loops: Animation.Infinite

            NumberAnimation { to: 0.9; duration: 1200; easing.type: Easing.InOutSine }
            NumberAnimation { to: 0.1; duration: 2400; easing.type: Easing.InOutSine }
            NumberAnimation { to: 0.5; duration: 1200; easing.type: Easing.InOutSine }
        }
    }

    Text {
        id: hint
        objectName: "hintLabel"

        x: screen.isWide ? frame.x + frame.width + screen.margin : screen.margin
        y: screen.sharp(screen.isWide ? (screen.height - height) / 2 : frame.y - height - screen.margin)
        width: screen.isWide ? screen.width - x - screen.margin : screen.width - 2 * screen.margin
        horizontalAlignment: screen.isWide ? Text.AlignLeft : Text.AlignHCenter
        wrapMode: Text.Wrap
        color: "white"
        renderType: Text.NativeRendering
        text: screen.state === "found" ? qsTr("Barcode found")
            : screen.state === "failed" ? qsTr("The camera cannot be used")
            : qsTr("Point the camera at a barcode")

        Accessible.role: screen.state === "failed" ? Accessible.AlertMessage : Accessible.StaticText
        Accessible.name: text
    }

    CaptureButton {
        id: cancel
        objectName: "cancelControl"

        x: screen.sharp(screen.isWide ? (frame.x - width) / 2 : (screen.width - width) / 2)
        y: screen.sharp(screen.isWide ? (screen.height - height) / 2
                                      : (frame.y + frame.height + screen.height - height) / 2)
        focus: true
        text: qsTr("Cancel")

        // It is the only one.
        KeyNavigation.tab: cancel
        KeyNavigation.backtab: cancel
    }
}
