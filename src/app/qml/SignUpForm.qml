import QtQuick
import Quorin

// Registration by mobile: the mobile and its code, then the new account's
// name and password. A registration signs the new account in.
Column {
    id: form
    property VORASignUpViewController signUp
    property string fontFamily
    signal backRequested()

    function submit() {
        if (form.signUp)
            form.signUp.signUp()
    }
    function focusFirst() {
        phone.focusFirst()
    }

    spacing: Theme.spacing

    PhoneCodeFields {
        id: phone
        width: form.width
        form: form.signUp
        fontFamily: form.fontFamily
        namePrefix: "signUp"
        onCodeAccepted: userName.input.forceActiveFocus()
    }
    AccountField {
        id: userName
        objectName: "signUpUserName"
        width: form.width
        fontFamily: form.fontFamily
        label: "用户名"
        placeholder: "3到20个字母、数字、下划线或汉字"
        value: form.signUp ? form.signUp.userName : ""
        onEdited: (text) => form.signUp.userName = text
        onAccepted: password.input.forceActiveFocus()
    }
    AccountField {
        id: password
        objectName: "signUpPassword"
        width: form.width
        fontFamily: form.fontFamily
        label: "密码"
        placeholder: "6到32位"
        secret: true
        value: form.signUp ? form.signUp.password : ""
        onEdited: (text) => form.signUp.password = text
        onAccepted: form.submit()
    }
    FormStatus {
        width: form.width
        fontFamily: form.fontFamily
        message: form.signUp ? form.signUp.message : ""
        busy: form.signUp !== null && form.signUp.busy
        good: phone.codeSentShown
    }
    AccountButton {
        objectName: "signUpButton"
        width: form.width
        fontFamily: form.fontFamily
        text: "注册"
        active: form.signUp !== null && !form.signUp.busy
        onClicked: form.submit()
    }
    AccountLink {
        objectName: "signUpBack"
        fontFamily: form.fontFamily
        text: "已有账号，返回登录"
        onClicked: form.backRequested()
    }
}
