import QtQuick
import QtQuick.Window
import Quorin

// The user panel (tag 109): the signed-in user, or the forms that sign one in
// (sign-in, registration, forgotten password, partner passport). It slides in
// from the side over the dimming layer; its body scrolls when the window is
// too short, and the focused field is scrolled into view.
Rectangle {
    id: panel
    property VORAUserViewController user
    property VORARootViewController rootController
    property string fontFamily
    // Which form shows while nobody is signed in.
    property string page: "signIn"
    readonly property bool signedIn: user !== null && user.isLogin

    function titleOf(name: string): string {
        switch (name) {
        case "signUp": return "注册"
        case "forgetPassword": return "找回密码"
        case "passport": return "合作账号登录"
        default: return "登录"
        }
    }
    // Every opening starts on the sign-in form, its first field focused.
    function opened() {
        panel.show("signIn")
        flick.contentY = 0
    }
    function show(name) {
        panel.page = name
        if (panel.signedIn)
            return
        if (name === "signIn")
            signInForm.focusFirst()
        else if (name === "signUp")
            signUpForm.focusFirst()
        else if (name === "forgetPassword")
            resetForm.focusFirst()
        else
            passportForm.focusFirst()
    }
    function ensureVisible(item) {
        for (let it = item; it; it = it.parent) {
            if (it !== flick.contentItem)
                continue
            const top = item.mapToItem(flick.contentItem, 0, 0).y - 48
            const bottom = top + item.height + 96
            if (top < flick.contentY)
                flick.contentY = Math.max(0, top)
            else if (bottom > flick.contentY + flick.height)
                flick.contentY = Math.min(flick.contentHeight - flick.height, bottom - flick.height)
            return
        }
    }

    readonly property Item focusedItem: Window.activeFocusItem
    onFocusedItemChanged: if (focusedItem) ensureVisible(focusedItem)
    onSignedInChanged: if (!signedIn) show("signIn")
    onVisibleChanged: if (visible) opened()

    color: Theme.surface
    Rectangle { width: 1; height: parent.height; color: Theme.surfaceBorder }
    // Clicks on the panel stay on the panel (the dimming layer closes it).
    MouseArea { anchors.fill: parent }

    Rectangle {
        id: top
        width: parent.width
        height: 64
        color: Theme.barBackground
        Text {
            objectName: "userPanelTitle"
            anchors.left: parent.left
            anchors.leftMargin: 24
            anchors.verticalCenter: parent.verticalCenter
            text: panel.signedIn ? "我的" : panel.titleOf(panel.page)
            color: Theme.textOnDark
            font.family: panel.fontFamily
            font.pixelSize: Theme.fontDisplay
            font.bold: true
        }
        Text {
            objectName: "closeUserPanel"
            anchors.right: parent.right
            anchors.rightMargin: 22
            anchors.verticalCenter: parent.verticalCenter
            text: "关闭"
            color: Theme.accentOnDark
            font.family: panel.fontFamily
            font.pixelSize: Theme.fontTitle
            MouseArea {
                anchors.fill: parent
                anchors.margins: -10
                onClicked: panel.rootController.closeUserView()
            }
        }
    }

    Flickable {
        id: flick
        anchors.top: top.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        contentHeight: body.height + 48
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: body
            x: 28
            y: 24
            width: panel.width - 56

            UserInfoView {
                objectName: "userInfo"
                width: body.width
                visible: panel.signedIn
                user: panel.user
                rootController: panel.rootController
                fontFamily: panel.fontFamily
            }
            SignInForm {
                id: signInForm
                objectName: "signInForm"
                width: body.width
                visible: !panel.signedIn && panel.page === "signIn"
                signIn: panel.user ? panel.user.signInView : null
                fontFamily: panel.fontFamily
                onSignUpRequested: panel.show("signUp")
                onForgetPasswordRequested: panel.show("forgetPassword")
                onPassportRequested: panel.show("passport")
            }
            SignUpForm {
                id: signUpForm
                objectName: "signUpForm"
                width: body.width
                visible: !panel.signedIn && panel.page === "signUp"
                signUp: panel.user ? panel.user.signUpView : null
                fontFamily: panel.fontFamily
                onBackRequested: panel.show("signIn")
            }
            ForgetPasswordForm {
                id: resetForm
                objectName: "forgetPasswordForm"
                width: body.width
                visible: !panel.signedIn && panel.page === "forgetPassword"
                reset: panel.user ? panel.user.forgetPasswordView : null
                fontFamily: panel.fontFamily
                onBackRequested: panel.show("signIn")
            }
            PassportForm {
                id: passportForm
                objectName: "passportForm"
                width: body.width
                visible: !panel.signedIn && panel.page === "passport"
                passport: panel.user ? panel.user.hwLoginView : null
                fontFamily: panel.fontFamily
                onBackRequested: panel.show("signIn")
            }
        }
    }

    // A new password is set: back to signing in, with the confirmation.
    Connections {
        target: panel.user ? panel.user.forgetPasswordView : null
        function onDone() {
            signInForm.notice = panel.user.forgetPasswordView.message
            panel.show("signIn")
        }
    }
}
