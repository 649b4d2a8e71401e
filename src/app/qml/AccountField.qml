import QtQuick
import Quorin

// One field of an account form: its label over a framed line of text. The
// text follows `value` (the form object's property) and every edit goes back
// through `edited`, so a form that clears a password clears the field too.
// Enter sends `accepted`; Tab moves on to the next field.
Column {
    id: field
    property string label
    property string placeholder
    property string value
    property bool secret: false
    property int inputHints: Qt.ImhNone
    property string fontFamily
    property alias input: input
    signal edited(string text)
    signal accepted()

    spacing: 4

    Text {
        text: field.label
        color: Theme.textSecondary
        font.family: field.fontFamily
        font.pixelSize: Theme.fontBody
    }
    Rectangle {
        width: field.width
        height: 42
        radius: Theme.radiusCard / 2
        color: Theme.card
        border.width: input.activeFocus ? 2 : 1
        border.color: input.activeFocus ? Theme.accent : Theme.cardBorder

        TextInput {
            id: input
            objectName: field.objectName + "Input"
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            verticalAlignment: TextInput.AlignVCenter
            clip: true
            activeFocusOnTab: true
            selectByMouse: true
            text: field.value
            echoMode: field.secret ? TextInput.Password : TextInput.Normal
            inputMethodHints: field.inputHints | (field.secret ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText : Qt.ImhNone)
            color: Theme.textPrimary
            selectionColor: Theme.accentSoft
            selectedTextColor: Theme.textPrimary
            font.family: field.fontFamily
            font.pixelSize: Theme.fontLarge
            onTextEdited: field.edited(text)
            onAccepted: field.accepted()

            Text {
                anchors.verticalCenter: parent.verticalCenter
                visible: input.text === "" && !input.activeFocus
                text: field.placeholder
                color: Theme.textPlaceholder
                font.family: field.fontFamily
                font.pixelSize: Theme.fontLarge
            }
        }
    }
}
