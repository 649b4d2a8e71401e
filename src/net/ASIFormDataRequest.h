#pragma once

#include "net/ASIHTTPRequest.h"

#include <QList>
#include <QPair>
#include <QString>

// A request that sends an ordered list of form fields as its body, with the
// method "POST": name=value pairs joined by "&" in the order they were added,
// both percent-escaped as UTF-8, content type
// "application/x-www-form-urlencoded; charset=utf-8".
class ASIFormDataRequest : public ASIHTTPRequest
{
    Q_OBJECT
public:
    explicit ASIFormDataRequest(const QUrl &url, QObject *parent = nullptr);

    static ASIFormDataRequest *requestWithURL(const QUrl &url);

    void setPostValue(const QString &value, const QString &key);
    QList<QPair<QString, QString>> postValues() const { return m_fields; }

    // The body as it is sent.
    QByteArray encodedPostBody() const;

protected:
    void buildPostBody() override;

private:
    QList<QPair<QString, QString>> m_fields;
};
