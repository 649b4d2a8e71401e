import QtQuick
import Quorin

// The user panel's sign-in form: a site account by name (or the mobile it
// registered with) and password, or a partner account.
Column {
    id: form
    property VORASignInUserView signIn
    property string fontFamily
    // A confirmation from another form ("密码已重置，请登录"), shown until
    // this form has a message of its own.
    property string notice
    signal signUpRequested()
    signal forgetPasswordRequested()
    signal passportRequested()

    function submit() {
        if (form.signIn)
            form.signIn.signIn()
    }
    function focusFirst() {
        userName.input.forceActiveFocus()
    }

    spacing: Theme.spacing

    AccountField {
        id: userName
        objectName: "signInUserName"
        width: form.width
        fontFamily: form.fontFamily
        label: "用户名"
        placeholder: "用户名 / 手机号"
        value: form.signIn ? form.signIn.userName : ""
        onEdited: (text) => form.signIn.userName = text
        onAccepted: password.input.forceActiveFocus()
    }
    AccountField {
        id: password
        objectName: "signInPassword"
        width: form.width
        fontFamily: form.fontFamily
        label: "密码"
        secret: true
        value: form.signIn ? form.signIn.password : ""
        onEdited: (text) => form.signIn.password = text
        onAccepted: form.submit()
    }
    FormStatus {
        width: form.width
        fontFamily: form.fontFamily
        message: form.signIn && form.signIn.message !== "" ? form.signIn.message : form.notice
        good: form.signIn !== null && form.signIn.message === "" && form.notice !== ""
        busy: form.signIn !== null && form.signIn.busy
    }
    AccountButton {
        objectName: "signInButton"
        width: form.width
        fontFamily: form.fontFamily
        text: "登录"
        active: form.signIn !== null && !form.signIn.busy
        onClicked: form.submit()
    }
    Item {
        width: form.width
        height: 28
        AccountLink {
            objectName: "toSignUp"
            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            fontFamily: form.fontFamily
            text: "注册"
            onClicked: form.signUpRequested()
        }
        AccountLink {
            objectName: "toForgetPassword"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            fontFamily: form.fontFamily
            text: "忘记密码"
            onClicked: form.forgetPasswordRequested()
        }
    }

    Rectangle { width: form.width; height: 1; color: Theme.separator }
    Text {
        text: "其他方式登录"
        color: Theme.textSecondary
        font.family: form.fontFamily
        font.pixelSize: Theme.fontBody
    }
    AccountField {
        objectName: "partnerAccount"
        width: form.width
        fontFamily: form.fontFamily
        label: "合作网站的账号"
        value: form.signIn ? form.signIn.partnerAccount : ""
        onEdited: (text) => form.signIn.partnerAccount = text
    }
    Row {
        spacing: Theme.spacingSmall
        readonly property real buttonWidth: (form.width - 2 * spacing) / 3
        AccountButton {
            objectName: "signInQQ"
            width: parent.buttonWidth
            primary: false
            fontFamily: form.fontFamily
            text: "QQ登录"
            active: form.signIn !== null && !form.signIn.busy
            onClicked: form.signIn.signInWithQQ()
        }
        AccountButton {
            objectName: "signInWeibo"
            width: parent.buttonWidth
            primary: false
            fontFamily: form.fontFamily
            text: "微博登录"
            active: form.signIn !== null && !form.signIn.busy
            onClicked: form.signIn.signInWithPartner("weibo")
        }
        AccountButton {
            objectName: "toPassport"
            width: parent.buttonWidth
            primary: false
            fontFamily: form.fontFamily
            text: "合作账号登录"
            onClicked: form.passportRequested()
        }
    }
}
