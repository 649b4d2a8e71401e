import QtQuick
import Quorin

// Sign-in through the partner passport: the account at the passport, then
// the passport's own sign-in page (played by the reference site's demo
// partner here).
Column {
    id: form
    property VORAHwLoginViewController passport
    property string fontFamily
    signal backRequested()

    function submit() {
        if (form.passport)
            form.passport.signIn()
    }
    function focusFirst() {
        account.input.forceActiveFocus()
    }

    spacing: Theme.spacing

    AccountField {
        id: account
        objectName: "passportAccount"
        width: form.width
        fontFamily: form.fontFamily
        label: "合作账号"
        value: form.passport ? form.passport.account : ""
        onEdited: (text) => form.passport.account = text
        onAccepted: form.submit()
    }
    FormStatus {
        width: form.width
        fontFamily: form.fontFamily
        message: form.passport ? form.passport.message : ""
        busy: form.passport !== null && form.passport.busy
    }
    AccountButton {
        objectName: "passportButton"
        width: form.width
        fontFamily: form.fontFamily
        text: "登录"
        active: form.passport !== null && !form.passport.busy
        onClicked: form.submit()
    }
    AccountLink {
        objectName: "passportBack"
        fontFamily: form.fontFamily
        text: "返回登录"
        onClicked: form.backRequested()
    }
}
