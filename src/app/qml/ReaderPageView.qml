import QtQuick

// Not built yet.
Item {
}
