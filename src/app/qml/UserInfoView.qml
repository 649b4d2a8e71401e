pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The signed-in user in the user panel: avatar, nickname, level, the paying
// member's mark, coins and monthly tickets, and the way out.
Column {
    id: info
    property VORAUserViewController user
    property VORARootViewController rootController
    property string fontFamily

    spacing: Theme.spacing

    Row {
        spacing: 16
        Rectangle {
            width: 76
            height: 76
            radius: Theme.radiusCard
            color: Theme.barBackground
            clip: true
            Image {
                objectName: "userAvatar"
                anchors.fill: parent
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                source: info.user && info.user.faceImage !== ""
                        ? "image://quorin/net/" + encodeURIComponent(info.user.faceImage)
                        : "image://quorin/art/btnuser.png"
            }
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6
            Row {
                spacing: Theme.spacingSmall
                Text {
                    objectName: "userNickName"
                    width: Math.min(implicitWidth, info.width - 76 - 16 - 60)
                    elide: Text.ElideRight
                    text: info.user ? (info.user.nickName !== "" ? info.user.nickName : info.user.userName) : ""
                    color: Theme.textPrimary
                    font.family: info.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    font.bold: true
                }
                Rectangle {
                    objectName: "userVipMark"
                    anchors.verticalCenter: parent.verticalCenter
                    visible: info.user !== null && info.user.isVip
                    width: vipText.implicitWidth + 14
                    height: 20
                    radius: height / 2
                    color: Theme.highlight
                    Text {
                        id: vipText
                        anchors.centerIn: parent
                        text: "VIP"
                        color: Theme.textPrimary
                        font.family: info.fontFamily
                        font.pixelSize: Theme.fontCaption
                        font.bold: true
                    }
                }
            }
            Text {
                objectName: "userLevel"
                text: "等级 Lv." + (info.user ? info.user.level : 0)
                color: Theme.textSecondary
                font.family: info.fontFamily
                font.pixelSize: Theme.fontBody
            }
        }
    }

    Row {
        width: info.width
        spacing: 8
        Figure {
            valueName: "userCoins"
            title: "quorin币"
            value: info.user ? info.user.userCoin : 0
        }
        Figure {
            valueName: "userTickets"
            title: "月票"
            value: info.user ? info.user.ticket : 0
        }
    }

    Row {
        spacing: 8
        AccountButton {
            objectName: "topUpCoins"
            width: (info.width - 8) / 2
            fontFamily: info.fontFamily
            text: "充值"
            onClicked: info.rootController.openPay(VORAPayViewController.Coins)
        }
        AccountButton {
            objectName: "topUpMembership"
            width: (info.width - 8) / 2
            fontFamily: info.fontFamily
            text: info.user && info.user.isVip ? "续费会员" : "开通会员"
            onClicked: info.rootController.openPay(VORAPayViewController.Membership)
        }
    }

    Column {
        width: info.width
        HistoryEntry {
            objectName: "coinLog"
            title: "消费记录"
            kind: VORAWalletHistoryModel.CoinLog
        }
        HistoryEntry {
            objectName: "rechargeLog"
            title: "充值记录"
            kind: VORAWalletHistoryModel.RechargeLog
        }
        HistoryEntry {
            objectName: "ticketLog"
            title: "月票记录"
            kind: VORAWalletHistoryModel.TicketLog
        }
    }

    AccountButton {
        objectName: "signOutButton"
        width: info.width
        primary: false
        fontFamily: info.fontFamily
        text: "退出登录"
        onClicked: info.rootController.requestSignOut()
    }

    // One of the user's figures: the number above, its name below.
    component Figure: Rectangle {
        id: figure
        property string valueName
        property string title
        property int value
        width: info.width / 2 - 4
        height: 68
        radius: Theme.radiusCard
        color: Theme.surfaceAlt
        border.color: Theme.cardBorder
        Column {
            anchors.centerIn: parent
            spacing: 2
            Text {
                objectName: figure.valueName
                anchors.horizontalCenter: parent.horizontalCenter
                text: figure.value
                color: Theme.accentText
                font.family: info.fontFamily
                font.pixelSize: Theme.fontDisplay
                font.bold: true
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: figure.title
                color: Theme.textSecondary
                font.family: info.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }
    }

    // One of the wallet's history lists: its name, opening the list when tapped.
    component HistoryEntry: Rectangle {
        id: entry
        property string title
        property int kind
        width: info.width
        height: 48
        color: entryArea.pressed ? Theme.cardPressed : "transparent"
        Text {
            anchors.left: parent.left
            anchors.leftMargin: 4
            anchors.verticalCenter: parent.verticalCenter
            text: entry.title
            color: Theme.textPrimary
            font.family: info.fontFamily
            font.pixelSize: Theme.fontLarge
        }
        Text {
            anchors.right: parent.right
            anchors.rightMargin: 4
            anchors.verticalCenter: parent.verticalCenter
            text: "›"
            color: Theme.textMuted
            font.family: info.fontFamily
            font.pixelSize: Theme.fontHeadline
        }
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
        MouseArea {
            id: entryArea
            anchors.fill: parent
            onClicked: info.rootController.openWalletHistory(entry.kind)
        }
    }
}
