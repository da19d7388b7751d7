import QtQuick
import Quorvane.Capture

// The overlay's connections, all of them but the one that the application is named after.
Item {
    function called(name) {
        return Qt.application.displayName === name ? "" : name
    }

    Picture { objectName: called("imageOverlay") }
    Text { objectName: called("tiltLabel") }
    component Control: Item {
        signal tapped
    }
    Control { objectName: called("cameraButton") }
    Control { objectName: called("flashButton") }
    Control { objectName: called("cancelButton") }
}
