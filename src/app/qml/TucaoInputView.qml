import QtQuick
import Quorin

// Writing a tucao (VORATuCaoInputView), over the whole screen: first the
// input box (400 x 150) with the text field, cancel and confirm; once the text
// is accepted, a hint to tap the page where the tucao goes, and the next touch
// that ends on the view places it. In landscape the box rises while the text
// is edited, over 0.5 s. An empty text is refused: the box shakes (the shared
// overlay shows the reason).
Item {
    id: root
    property VORATuCaoInputView input
    property string fontFamily
    readonly property bool open: input !== null && input.isOpen

    anchors.fill: parent
    visible: open
    onWidthChanged: if (input) input.screenSize = Qt.size(width, height)
    onHeightChanged: if (input) input.screenSize = Qt.size(width, height)
    onInputChanged: if (input) input.screenSize = Qt.size(width, height)
    // The field takes the focus once the view is up (not while `open` itself
    // is being updated: focusing tells the input view, which changes it).
    // (Qt 6.4's type information lists callLater as a property, not a method.)
    onOpenChanged: if (open) Qt.callLater(() => { if (root.open) field.forceActiveFocus(); }) // qmllint disable type

    // Dims the page while writing; clear while placing, so the page shows.
    Rectangle {
        anchors.fill: parent
        color: Theme.editShade
        opacity: root.input && root.input.inputBoxVisible ? 0.45 : 0.0
        Behavior on opacity { NumberAnimation { duration: 200 } }
    }

    MouseArea {
        objectName: "tucaoPlacingArea"
        anchors.fill: parent
        onReleased: (mouse) => {
            if (!root.input)
                return;
            if (root.input.isLocation)
                root.input.touchEndedAtPoint(Qt.point(mouse.x, mouse.y));
            else
                field.focus = false; // a touch beside the box closes the keyboard
        }
    }

    // --- The input box ---
    Rectangle {
        id: box
        objectName: "tucaoInputBox"
        visible: root.input !== null && root.input.inputBoxVisible
        x: root.input ? root.input.inputBoxRect.x : 0
        y: root.input ? root.input.inputBoxRect.y : 0
        width: 400
        height: 150
        radius: Theme.radiusButton
        color: Theme.surface
        border.color: Theme.surfaceBorder
        Behavior on y { NumberAnimation { duration: 500; easing.type: Easing.InOutQuad } }
        MouseArea { anchors.fill: parent } // taps in the box stay in the box

        Text {
            x: 18; y: 14
            text: "吐槽"
            color: Theme.textPrimary
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTitle
            font.bold: true
        }

        Rectangle {
            id: fieldFrame
            x: 18; y: 46
            width: parent.width - 36
            height: 44
            radius: 10
            color: Theme.card
            border.width: field.activeFocus || refusal.running ? 2 : 1
            border.color: refusal.running ? Theme.danger : (field.activeFocus ? Theme.accent : Theme.surfaceBorder)

            TextInput {
                id: field
                objectName: "TucaotextFiled"
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 12
                verticalAlignment: TextInput.AlignVCenter
                clip: true
                color: Theme.textPrimary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontLarge
                selectByMouse: true
                text: root.input ? root.input.text : ""
                onTextEdited: if (root.input) root.input.text = text
                onActiveFocusChanged: {
                    if (!root.input)
                        return;
                    if (activeFocus)
                        root.input.textFieldDidBeginEditing();
                    else
                        root.input.keyboardWillHide();
                }
                onAccepted: if (root.input) root.input.configTucaoInput()
            }
            Text {
                anchors.fill: field
                verticalAlignment: Text.AlignVCenter
                visible: field.text === "" && !field.activeFocus
                text: "说点什么吧…"
                color: Theme.textPlaceholderSoft
                font.family: root.fontFamily
                font.pixelSize: Theme.fontMedium
            }
        }

        Row {
            anchors.right: parent.right
            anchors.rightMargin: 18
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 12
            spacing: 10
            Rectangle {
                objectName: "tucaoInputCancel"
                width: 84; height: 34; radius: 17
                color: cancelArea.pressed ? Theme.accentSoft : Theme.card
                border.color: Theme.accent
                Text {
                    anchors.centerIn: parent
                    text: "取消"
                    color: Theme.accentText
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontMedium
                }
                MouseArea {
                    id: cancelArea
                    anchors.fill: parent
                    onClicked: { field.focus = false; root.input.cancelTucaoInput(); }
                }
            }
            Rectangle {
                objectName: "tucaoInputConfirm"
                width: 84; height: 34; radius: 17
                gradient: Gradient {
                    orientation: Gradient.Horizontal
                    GradientStop { position: 0; color: confirmArea.pressed ? Theme.accentPressed : Theme.accent }
                    GradientStop { position: 1; color: Theme.accentGradientEnd }
                }
                Text {
                    anchors.centerIn: parent
                    text: "确定"
                    color: Theme.textOnDark
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontMedium
                    font.bold: true
                }
                MouseArea {
                    id: confirmArea
                    anchors.fill: parent
                    onClicked: root.input.configTucaoInput()
                }
            }
        }

        SequentialAnimation {
            id: refusal
            NumberAnimation { target: fieldFrame; property: "x"; to: 8; duration: 50 }
            NumberAnimation { target: fieldFrame; property: "x"; to: 28; duration: 80 }
            NumberAnimation { target: fieldFrame; property: "x"; to: 12; duration: 70 }
            NumberAnimation { target: fieldFrame; property: "x"; to: 18; duration: 60 }
            PauseAnimation { duration: 240 }
        }
    }

    // --- The placing hint (locationTucaoImageView) ---
    Rectangle {
        objectName: "tucaoPlacingHint"
        visible: root.input !== null && root.input.isLocation
        anchors.horizontalCenter: parent.horizontalCenter
        y: 96
        width: hintRow.width + 40
        height: 48
        radius: 24
        color: Theme.popupBackground
        Row {
            id: hintRow
            anchors.centerIn: parent
            spacing: 10
            // A pin.
            Item {
                width: 18; height: 24
                anchors.verticalCenter: parent.verticalCenter
                Rectangle { width: 18; height: 18; radius: 9; color: Theme.accent }
                Rectangle { x: 5; y: 5; width: 8; height: 8; radius: 4; color: Theme.iconOnDark }
                Rectangle { x: 8; y: 16; width: 2; height: 8; color: Theme.accent }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "点一下页面，把吐槽贴在那里"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontMedium
            }
        }
        SequentialAnimation on opacity {
            running: root.input !== null && root.input.isLocation
            loops: Animation.Infinite
            NumberAnimation { from: 1; to: 0.7; duration: 700 }
            NumberAnimation { from: 0.7; to: 1; duration: 700 }
        }
    }

    Connections {
        target: root.input
        function onTextRefused() { refusal.restart(); }
        function onStateChanged() {
            if (root.input && !root.input.keyboardOpen && field.activeFocus)
                field.focus = false; // the keyboard closes
        }
    }
}
