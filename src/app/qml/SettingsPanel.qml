import QtQuick
import Quorin

// The settings panel (tag 108): reader preferences, cache size and clearing,
// account, version.
Rectangle {
    id: panel
    property VORASettingView settings
    property VORARootViewController rootController
    property string fontFamily

    color: Theme.surface
    Rectangle { width: 1; height: parent.height; color: Theme.surfaceBorder }

    Rectangle {
        id: top
        width: parent.width
        height: 64
        color: Theme.barBackground
        Text {
            anchors.left: parent.left
            anchors.leftMargin: 24
            anchors.verticalCenter: parent.verticalCenter
            text: "设置"
            color: Theme.textOnDark
            font.family: panel.fontFamily
            font.pixelSize: Theme.fontDisplay
            font.bold: true
        }
        Text {
            objectName: "closeSettings"
            anchors.right: parent.right
            anchors.rightMargin: 22
            anchors.verticalCenter: parent.verticalCenter
            text: "完成"
            color: Theme.accentOnDark
            font.family: panel.fontFamily
            font.pixelSize: Theme.fontTitle
            MouseArea {
                anchors.fill: parent
                anchors.margins: -10
                onClicked: panel.rootController.closeSettingView()
            }
        }
    }

    Flickable {
        anchors.top: top.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        contentHeight: column.height + 40
        clip: true

        Column {
            id: column
            x: 24
            y: 16
            width: panel.width - 48
            spacing: 4

            Text { text: "阅读"; color: Theme.accentText; font.family: panel.fontFamily; font.pixelSize: Theme.fontBody; font.bold: true; topPadding: 8 }
            SettingSwitch {
                width: column.width; fontFamily: panel.fontFamily
                title: "书架更新提醒"
                checked: panel.settings ? panel.settings.isNotifyUpdate : false
                onToggled: (on) => panel.settings.isNotifyUpdate = on
            }
            SettingSwitch {
                width: column.width; fontFamily: panel.fontFamily
                title: "音量键翻页"
                checked: panel.settings ? panel.settings.isTurnPageByVolumeBtn : false
                onToggled: (on) => panel.settings.isTurnPageByVolumeBtn = on
            }
            SettingSwitch {
                width: column.width; fontFamily: panel.fontFamily
                title: "显示吐槽"
                checked: panel.settings ? panel.settings.isDisplayTuCao : false
                onToggled: (on) => panel.settings.isDisplayTuCao = on
            }
            SettingSwitch {
                width: column.width; fontFamily: panel.fontFamily
                title: "竖屏阅读"
                checked: panel.settings ? panel.settings.isVerticalScreen : false
                onToggled: (on) => panel.settings.isVerticalScreen = on
            }
            SettingSwitch {
                width: column.width; fontFamily: panel.fontFamily
                title: "自动调节亮度"
                checked: panel.settings ? panel.settings.isAutoLuminance : false
                onToggled: (on) => panel.settings.isAutoLuminance = on
            }

            Text { text: "缓存"; color: Theme.accentText; font.family: panel.fontFamily; font.pixelSize: Theme.fontBody; font.bold: true; topPadding: 20 }
            Item {
                width: column.width
                height: 56
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "图片缓存  " + (panel.settings ? panel.settings.cacheSizeText : "")
                    color: Theme.textPrimary
                    font.family: panel.fontFamily
                    font.pixelSize: Theme.fontLarge
                }
                Rectangle {
                    objectName: "clearCache"
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: 112; height: 38
                    radius: 19
                    opacity: panel.settings && panel.settings.busy ? 0.5 : 1
                    color: clearArea.pressed ? Theme.accentPressed : Theme.accent
                    Text {
                        anchors.centerIn: parent
                        text: panel.settings && panel.settings.busy ? "清除中…" : "清除缓存"
                        color: Theme.textOnDark
                        font.family: panel.fontFamily
                        font.pixelSize: Theme.fontMedium
                    }
                    MouseArea {
                        id: clearArea
                        anchors.fill: parent
                        onClicked: panel.settings.clearCache()
                    }
                }
            }

            Text { text: "账号"; color: Theme.accentText; font.family: panel.fontFamily; font.pixelSize: Theme.fontBody; font.bold: true; topPadding: 20 }
            Item {
                width: column.width
                height: 56
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: panel.settings && panel.settings.isLogin ? panel.settings.userName : "未登录"
                    color: Theme.textPrimary
                    font.family: panel.fontFamily
                    font.pixelSize: Theme.fontLarge
                }
                Text {
                    visible: panel.settings && panel.settings.isLogin
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: "退出登录"
                    color: Theme.danger
                    font.family: panel.fontFamily
                    font.pixelSize: Theme.fontLarge
                    MouseArea { anchors.fill: parent; anchors.margins: -8; onClicked: panel.rootController.requestSignOut() }
                }
            }

            Text { text: "关于"; color: Theme.accentText; font.family: panel.fontFamily; font.pixelSize: Theme.fontBody; font.bold: true; topPadding: 20 }
            Text {
                objectName: "version"
                topPadding: 12
                text: "Quorin Reader  版本 " + (panel.settings ? panel.settings.version : "")
                color: Theme.textSecondary
                font.family: panel.fontFamily
                font.pixelSize: Theme.fontMedium
            }
        }
    }
}
