import QtQml

QtObject {
}
