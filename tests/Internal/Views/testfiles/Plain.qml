import QtQuick

Rectangle {
    width: 100
    height: 50
    color: "blue"

    Item {
        objectName: "button"
        signal tapped

        width: 44
        height: 44

        TapHandler {
            onTapped: parent.tapped()
        }
    }

    QtObject {
        objectName: "constraint"
        property real constant: 3
    }
}
