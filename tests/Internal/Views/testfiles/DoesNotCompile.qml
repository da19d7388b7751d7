import QtQuick

Item {
    width: 
}
