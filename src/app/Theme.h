#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The look of the app: colours, fonts, sizes and the background picture,
// named by the role they play. QML takes every colour and size from here
// (`Theme.accent`, `Theme.fontSmall`) and keeps only layout arithmetic of its
// own. Every property notifies `changed` and none is constant, so a skin can
// replace the values while the app runs and every binding follows.
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // Text
    Q_PROPERTY(QString fontFamily MEMBER m_fontFamily NOTIFY changed)
    Q_PROPERTY(QColor textPrimary MEMBER m_textPrimary NOTIFY changed)
    Q_PROPERTY(QColor textBody MEMBER m_textBody NOTIFY changed)
    Q_PROPERTY(QColor textSecondary MEMBER m_textSecondary NOTIFY changed)
    Q_PROPERTY(QColor textTertiary MEMBER m_textTertiary NOTIFY changed)
    Q_PROPERTY(QColor textMuted MEMBER m_textMuted NOTIFY changed)
    Q_PROPERTY(QColor textHint MEMBER m_textHint NOTIFY changed)
    Q_PROPERTY(QColor textPlaceholder MEMBER m_textPlaceholder NOTIFY changed)
    Q_PROPERTY(QColor textPlaceholderSoft MEMBER m_textPlaceholderSoft NOTIFY changed)
    Q_PROPERTY(QColor textOnDark MEMBER m_textOnDark NOTIFY changed)
    Q_PROPERTY(QColor textOnDarkSecondary MEMBER m_textOnDarkSecondary NOTIFY changed)
    Q_PROPERTY(QColor textOnDarkInactive MEMBER m_textOnDarkInactive NOTIFY changed)
    Q_PROPERTY(QColor textOnDarkMuted MEMBER m_textOnDarkMuted NOTIFY changed)
    Q_PROPERTY(QColor iconOnDark MEMBER m_iconOnDark NOTIFY changed)
    Q_PROPERTY(QColor tucaoText MEMBER m_tucaoText NOTIFY changed)
    // Accent
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY changed)
    Q_PROPERTY(QColor accentPressed MEMBER m_accentPressed NOTIFY changed)
    Q_PROPERTY(QColor accentText MEMBER m_accentText NOTIFY changed)
    Q_PROPERTY(QColor accentGradientEnd MEMBER m_accentGradientEnd NOTIFY changed)
    Q_PROPERTY(QColor accentSoft MEMBER m_accentSoft NOTIFY changed)
    Q_PROPERTY(QColor accentPale MEMBER m_accentPale NOTIFY changed)
    Q_PROPERTY(QColor accentOnDark MEMBER m_accentOnDark NOTIFY changed)
    Q_PROPERTY(QColor accentOnDarkSoft MEMBER m_accentOnDarkSoft NOTIFY changed)
    Q_PROPERTY(QColor highlight MEMBER m_highlight NOTIFY changed)
    Q_PROPERTY(QColor danger MEMBER m_danger NOTIFY changed)
    // Count badges on the main buttons: a ring keeps them apart from any skin's bar and accent
    Q_PROPERTY(QColor badgeBackground MEMBER m_badgeBackground NOTIFY changed)
    Q_PROPERTY(QColor badgeText MEMBER m_badgeText NOTIFY changed)
    Q_PROPERTY(QColor badgeRing MEMBER m_badgeRing NOTIFY changed)
    Q_PROPERTY(int badgeSize MEMBER m_badgeSize NOTIFY changed)
    Q_PROPERTY(QColor dangerPressed MEMBER m_dangerPressed NOTIFY changed)
    // Surfaces
    Q_PROPERTY(QColor windowBackground MEMBER m_windowBackground NOTIFY changed)
    Q_PROPERTY(QColor surface MEMBER m_surface NOTIFY changed)
    Q_PROPERTY(QColor surfaceTranslucent MEMBER m_surfaceTranslucent NOTIFY changed)
    Q_PROPERTY(QColor surfaceAlt MEMBER m_surfaceAlt NOTIFY changed)
    Q_PROPERTY(QColor surfaceWarm MEMBER m_surfaceWarm NOTIFY changed)
    Q_PROPERTY(QColor surfaceBorder MEMBER m_surfaceBorder NOTIFY changed)
    Q_PROPERTY(QColor card MEMBER m_card NOTIFY changed)
    Q_PROPERTY(QColor cardPressed MEMBER m_cardPressed NOTIFY changed)
    Q_PROPERTY(QColor cardBorder MEMBER m_cardBorder NOTIFY changed)
    Q_PROPERTY(QColor separator MEMBER m_separator NOTIFY changed)
    Q_PROPERTY(QColor buttonNeutral MEMBER m_buttonNeutral NOTIFY changed)
    Q_PROPERTY(QColor buttonNeutralPressed MEMBER m_buttonNeutralPressed NOTIFY changed)
    Q_PROPERTY(QColor switchOff MEMBER m_switchOff NOTIFY changed)
    Q_PROPERTY(QColor bannerPlaceholder MEMBER m_bannerPlaceholder NOTIFY changed)
    Q_PROPERTY(QColor pageDotInactive MEMBER m_pageDotInactive NOTIFY changed)
    // Bars, panels and shades
    Q_PROPERTY(QColor barBackground MEMBER m_barBackground NOTIFY changed)
    Q_PROPERTY(QColor barGradientEnd MEMBER m_barGradientEnd NOTIFY changed)
    Q_PROPERTY(QColor barButton MEMBER m_barButton NOTIFY changed)
    Q_PROPERTY(QColor pressedOnDark MEMBER m_pressedOnDark NOTIFY changed)
    Q_PROPERTY(QColor pressedOnDarkStrong MEMBER m_pressedOnDarkStrong NOTIFY changed)
    Q_PROPERTY(QColor lineOnDark MEMBER m_lineOnDark NOTIFY changed)
    Q_PROPERTY(QColor barShadow MEMBER m_barShadow NOTIFY changed)
    Q_PROPERTY(QColor barShadowEnd MEMBER m_barShadowEnd NOTIFY changed)
    Q_PROPERTY(QColor panelShadow MEMBER m_panelShadow NOTIFY changed)
    Q_PROPERTY(QColor panelShadowEnd MEMBER m_panelShadowEnd NOTIFY changed)
    Q_PROPERTY(QColor popupBackground MEMBER m_popupBackground NOTIFY changed)
    Q_PROPERTY(QColor noticeBackground MEMBER m_noticeBackground NOTIFY changed)
    Q_PROPERTY(QColor hudBackground MEMBER m_hudBackground NOTIFY changed)
    Q_PROPERTY(QColor shade MEMBER m_shade NOTIFY changed)
    Q_PROPERTY(QColor modalShade MEMBER m_modalShade NOTIFY changed)
    Q_PROPERTY(QColor editShade MEMBER m_editShade NOTIFY changed)
    // Over a bookshelf card in edit mode, under its delete button.
    Q_PROPERTY(QColor cardEditShade MEMBER m_cardEditShade NOTIFY changed)
    Q_PROPERTY(QColor helpShade MEMBER m_helpShade NOTIFY changed)
    Q_PROPERTY(QColor helpBorder MEMBER m_helpBorder NOTIFY changed)
    // Reader
    Q_PROPERTY(QColor readerBackground MEMBER m_readerBackground NOTIFY changed)
    Q_PROPERTY(QColor readerBarBackground MEMBER m_readerBarBackground NOTIFY changed)
    Q_PROPERTY(QColor readerBarText MEMBER m_readerBarText NOTIFY changed)
    Q_PROPERTY(QColor readerBarTextMuted MEMBER m_readerBarTextMuted NOTIFY changed)
    Q_PROPERTY(QColor readerMenuBackground MEMBER m_readerMenuBackground NOTIFY changed)
    // Chapter marks (bought, read later) and the search keywords' colours
    Q_PROPERTY(QColor markBoughtBackground MEMBER m_markBoughtBackground NOTIFY changed)
    Q_PROPERTY(QColor markBoughtText MEMBER m_markBoughtText NOTIFY changed)
    Q_PROPERTY(QColor markLaterBackground MEMBER m_markLaterBackground NOTIFY changed)
    Q_PROPERTY(QColor markLaterText MEMBER m_markLaterText NOTIFY changed)
    Q_PROPERTY(QColor markPaidBackground MEMBER m_markPaidBackground NOTIFY changed)
    Q_PROPERTY(QColor markPaidText MEMBER m_markPaidText NOTIFY changed)
    Q_PROPERTY(QVariantList tagFills MEMBER m_tagFills NOTIFY changed)
    Q_PROPERTY(QVariantList tagInks MEMBER m_tagInks NOTIFY changed)
    // Font sizes (pixels)
    Q_PROPERTY(int fontTiny MEMBER m_fontTiny NOTIFY changed)
    Q_PROPERTY(int fontCaption MEMBER m_fontCaption NOTIFY changed)
    Q_PROPERTY(int fontSmall MEMBER m_fontSmall NOTIFY changed)
    Q_PROPERTY(int fontBody MEMBER m_fontBody NOTIFY changed)
    Q_PROPERTY(int fontMedium MEMBER m_fontMedium NOTIFY changed)
    Q_PROPERTY(int fontLarge MEMBER m_fontLarge NOTIFY changed)
    Q_PROPERTY(int fontTitle MEMBER m_fontTitle NOTIFY changed)
    Q_PROPERTY(int fontHeading MEMBER m_fontHeading NOTIFY changed)
    Q_PROPERTY(int fontHeadingLarge MEMBER m_fontHeadingLarge NOTIFY changed)
    Q_PROPERTY(int fontHeadline MEMBER m_fontHeadline NOTIFY changed)
    Q_PROPERTY(int fontDisplay MEMBER m_fontDisplay NOTIFY changed)
    Q_PROPERTY(int fontDisplayLarge MEMBER m_fontDisplayLarge NOTIFY changed)
    // Corners and spacing
    Q_PROPERTY(int radiusPanel MEMBER m_radiusPanel NOTIFY changed)
    Q_PROPERTY(int radiusCard MEMBER m_radiusCard NOTIFY changed)
    Q_PROPERTY(int radiusButton MEMBER m_radiusButton NOTIFY changed)
    Q_PROPERTY(int spacingSmall MEMBER m_spacingSmall NOTIFY changed)
    Q_PROPERTY(int spacing MEMBER m_spacing NOTIFY changed)
    // The background picture behind the shell
    Q_PROPERTY(QString backgroundName MEMBER m_backgroundName NOTIFY changed)
public:
    explicit Theme(QObject *parent = nullptr);

signals:
    void changed();

private:
    // Text
    QString m_fontFamily = QStringLiteral("Noto Sans CJK SC");
    QColor m_textPrimary{"#2E3047"};
    QColor m_textBody{"#5A5468"};
    QColor m_textSecondary{"#6B6477"};
    QColor m_textTertiary{"#8A8197"};
    QColor m_textMuted{"#9A93A6"};
    QColor m_textHint{"#9A8C80"};
    QColor m_textPlaceholder{"#B3ACBD"};
    QColor m_textPlaceholderSoft{"#B0A8BA"};
    QColor m_textOnDark{"white"};
    QColor m_textOnDarkSecondary{"#D8D4E8"};
    QColor m_textOnDarkInactive{"#C9C6DA"};
    QColor m_textOnDarkMuted{"#8E8AA8"};
    QColor m_iconOnDark{"white"};
    QColor m_tucaoText{"black"};
    // Accent
    QColor m_accent{"#FF7043"};
    QColor m_accentPressed{"#E0603A"};
    QColor m_accentText{"#E0603A"};
    QColor m_accentGradientEnd{"#F06292"};
    QColor m_accentSoft{"#FFE3D6"};
    QColor m_accentPale{"#FFF1EB"};
    QColor m_accentOnDark{"#FFB199"};
    QColor m_accentOnDarkSoft{"#FFAB91"};
    QColor m_highlight{"#FFD180"};
    QColor m_danger{"#E53935"};
    QColor m_dangerPressed{"#C62828"};
    QColor m_badgeBackground{"#D32F2F"};
    QColor m_badgeText{"white"};
    QColor m_badgeRing{"white"};
    int m_badgeSize = 22;
    // Surfaces
    QColor m_windowBackground{"#FFF3E6"};
    QColor m_surface{"#FFFCF8"};
    QColor m_surfaceTranslucent{"#F2FFFCF8"};
    QColor m_surfaceAlt{"#FFF7F1"};
    QColor m_surfaceWarm{"#FFF5EF"};
    QColor m_surfaceBorder{"#EADFD3"};
    QColor m_card{"white"};
    QColor m_cardPressed{"#FFF0E6"};
    QColor m_cardBorder{"#F0E6DC"};
    QColor m_separator{"#F1E8DF"};
    QColor m_buttonNeutral{"#F1ECE7"};
    QColor m_buttonNeutralPressed{"#E4DED8"};
    QColor m_switchOff{"#D8D2CC"};
    QColor m_bannerPlaceholder{"#3B3F58"};
    QColor m_pageDotInactive{"#AAFFFFFF"};
    // Bars, panels and shades
    QColor m_barBackground{"#2E3047"};
    QColor m_barGradientEnd{"#3F3D56"};
    QColor m_barButton{"#3A3C58"};
    QColor m_pressedOnDark{"#4DFFFFFF"};
    QColor m_pressedOnDarkStrong{"#55FFFFFF"};
    QColor m_lineOnDark{"#33FFFFFF"};
    QColor m_barShadow{"#262E3047"};
    QColor m_barShadowEnd{"#002E3047"};
    QColor m_panelShadow{"#33000000"};
    QColor m_panelShadowEnd{"#00000000"};
    QColor m_popupBackground{"#E62E3047"};
    QColor m_noticeBackground{"#CC2E3047"};
    QColor m_hudBackground{"#DD2E3047"};
    QColor m_shade{"black"};
    QColor m_modalShade{"#80000000"};
    QColor m_editShade{"#000000"};
    QColor m_cardEditShade{"#59000000"};
    QColor m_helpShade{"#D9000000"};
    QColor m_helpBorder{"#99FFFFFF"};
    // Reader
    QColor m_readerBackground{"black"};
    QColor m_readerBarBackground{"#EB23253A"};
    QColor m_readerBarText{"#E6FFFFFF"};
    QColor m_readerBarTextMuted{"#B3FFFFFF"};
    QColor m_readerMenuBackground{"#CC23253A"};
    // Chapter marks (bought, read later) and the search keywords' colours
    QColor m_markBoughtBackground{"#E8F5E9"};
    QColor m_markBoughtText{"#2E7D32"};
    QColor m_markLaterBackground{"#EDE7F6"};
    QColor m_markLaterText{"#5E35B1"};
    QColor m_markPaidBackground{"#FFE3D6"};
    QColor m_markPaidText{"#D84315"};
    QVariantList m_tagFills{QColor("#FFE3D6"), QColor("#E3F2FD"), QColor("#EDE7F6"), QColor("#E8F5E9")};
    QVariantList m_tagInks{QColor("#D84315"), QColor("#1565C0"), QColor("#5E35B1"), QColor("#2E7D32")};
    // Font sizes (pixels)
    int m_fontTiny = 11;
    int m_fontCaption = 12;
    int m_fontSmall = 13;
    int m_fontBody = 14;
    int m_fontMedium = 15;
    int m_fontLarge = 16;
    int m_fontTitle = 17;
    int m_fontHeading = 18;
    int m_fontHeadingLarge = 19;
    int m_fontHeadline = 20;
    int m_fontDisplay = 22;
    int m_fontDisplayLarge = 26;
    // Corners and spacing
    int m_radiusPanel = 18;
    int m_radiusCard = 12;
    int m_radiusButton = 16;
    int m_spacingSmall = 8;
    int m_spacing = 12;
    // The background picture behind the shell
    QString m_backgroundName = QStringLiteral("one");
};
