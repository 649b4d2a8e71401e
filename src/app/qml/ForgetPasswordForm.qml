import QtQuick
import Quorin

// A new password for the account registered with a mobile: the mobile and
// its code, then the new password; the reader then signs in with it.
Column {
    id: form
    property VORAForgetPasswordViewController reset
    property string fontFamily
    signal backRequested()

    function submit() {
        if (form.reset)
            form.reset.resetPassword()
    }
    function focusFirst() {
        phone.focusFirst()
    }

    spacing: Theme.spacing

    PhoneCodeFields {
        id: phone
        width: form.width
        form: form.reset
        fontFamily: form.fontFamily
        namePrefix: "reset"
        onCodeAccepted: password.input.forceActiveFocus()
    }
    AccountField {
        id: password
        objectName: "resetPassword"
        width: form.width
        fontFamily: form.fontFamily
        label: "新密码"
        placeholder: "6到32位"
        secret: true
        value: form.reset ? form.reset.password : ""
        onEdited: (text) => form.reset.password = text
        onAccepted: form.submit()
    }
    FormStatus {
        width: form.width
        fontFamily: form.fontFamily
        message: form.reset ? form.reset.message : ""
        busy: form.reset !== null && form.reset.busy
        good: phone.codeSentShown
    }
    AccountButton {
        objectName: "resetButton"
        width: form.width
        fontFamily: form.fontFamily
        text: "重置密码"
        active: form.reset !== null && !form.reset.busy
        onClicked: form.submit()
    }
    AccountLink {
        objectName: "resetBack"
        fontFamily: form.fontFamily
        text: "返回登录"
        onClicked: form.backRequested()
    }
}
