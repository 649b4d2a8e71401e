#include "net/NetLog.h"

#include <QRegularExpression>
#include <QUrl>

Q_LOGGING_CATEGORY(lcNet, "quorin.net")

QString netLogSafe(const QString &urlText)
{
    static const QRegularExpression secret(QStringLiteral("([?&](?:password|key)=)[^&#]*"),
                                             QRegularExpression::CaseInsensitiveOption);
    QString text = urlText;
    return text.replace(secret, QStringLiteral("\\1***"));
}

QString netLogSafe(const QUrl &url)
{
    return netLogSafe(url.toString(QUrl::FullyEncoded));
}
