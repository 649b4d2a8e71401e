#include "net/ASIFormDataRequest.h"

#include <QUrl>

ASIFormDataRequest::ASIFormDataRequest(const QUrl &url, QObject *parent)
    : ASIHTTPRequest(url, parent)
{
    m_method = "POST";
}

ASIFormDataRequest *ASIFormDataRequest::requestWithURL(const QUrl &url)
{
    return new ASIFormDataRequest(url);
}

void ASIFormDataRequest::setPostValue(const QString &value, const QString &key)
{
    m_fields.append({key, value});
}

QByteArray ASIFormDataRequest::encodedPostBody() const
{
    QByteArray body;
    for (qsizetype i = 0; i < m_fields.size(); ++i) {
        if (i > 0)
            body += '&';
        body += QUrl::toPercentEncoding(m_fields.at(i).first);
        body += '=';
        body += QUrl::toPercentEncoding(m_fields.at(i).second);
    }
    return body;
}

void ASIFormDataRequest::buildPostBody()
{
    m_method = "POST";
    m_postBody = encodedPostBody();
    addRequestHeader("Content-Type", "application/x-www-form-urlencoded; charset=utf-8");
}
