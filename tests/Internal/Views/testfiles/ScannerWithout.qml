import QtQuick

// The scanner's connections, all of them but the one that the application is named after.
Item {
    width: 360
    height: 640

    function called(name) {
        return Qt.application.displayName === name ? "" : name
    }

    Item {
        objectName: called("containerView")
        property string maskPath
    }

    Rectangle { objectName: called("scanlineView") }
    Rectangle { objectName: called("scannerFrameView") }

    QtObject {
        objectName: called("scannerFrameWidth")
        property real constant
    }

    Item {
        objectName: called("cancelControl")
        signal tapped
    }
}
