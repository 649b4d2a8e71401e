import QtQuick
import Quorin

// The mobile and the text-message code of the registration and the password
// reset, with the button that asks for a code (its text counts down while
// another code may not be asked).
Column {
    id: fields
    property VORAPhoneCodeForm form
    property string fontFamily
    property string namePrefix
    // The form's message is the site's word that a code was sent (not a fault).
    readonly property bool codeSentShown: fields.form !== null && fields.form.message !== ""
                                          && fields.form.message === fields.sentMessage
    property string sentMessage
    // Enter in the code field moves on to the form's next field.
    signal codeAccepted()

    function focusFirst() {
        mobile.input.forceActiveFocus()
    }

    spacing: Theme.spacing

    // A countdown starts right after the site said that the code is on its way.
    property int lastCountdown: 0
    Connections {
        target: fields.form
        function onCountdownChanged() {
            if (fields.lastCountdown === 0 && fields.form.countdown > 0)
                fields.sentMessage = fields.form.message
            fields.lastCountdown = fields.form.countdown
        }
    }

    AccountField {
        id: mobile
        objectName: fields.namePrefix + "Mobile"
        width: fields.width
        fontFamily: fields.fontFamily
        label: "手机号"
        inputHints: Qt.ImhDialableCharactersOnly
        value: fields.form ? fields.form.mobile : ""
        onEdited: (text) => fields.form.mobile = text
        onAccepted: code.input.forceActiveFocus()
    }
    Row {
        spacing: Theme.spacingSmall
        AccountField {
            id: code
            objectName: fields.namePrefix + "Code"
            width: fields.width - codeButton.width - parent.spacing
            fontFamily: fields.fontFamily
            label: "验证码"
            inputHints: Qt.ImhDigitsOnly
            value: fields.form ? fields.form.code : ""
            onEdited: (text) => fields.form.code = text
            onAccepted: fields.codeAccepted()
        }
        AccountButton {
            id: codeButton
            objectName: fields.namePrefix + "CodeButton"
            anchors.bottom: code.bottom
            width: 132
            height: 42
            primary: false
            fontFamily: fields.fontFamily
            text: fields.form ? fields.form.codeButtonText : ""
            active: fields.form !== null && !fields.form.busy && fields.form.countdown === 0
            onClicked: fields.form.requestCode()
        }
    }
}
