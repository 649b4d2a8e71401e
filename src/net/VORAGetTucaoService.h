#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORATucao.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

// The tucao of one page: after firstId when it is set, else after lastId.
class VORAGetTucaoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    std::optional<QList<VORATucao>> tucaoList() const;

    // Request
    QString pageId;
    QString firstId;
    QString lastId;
    qint64 pageSize = 0;
    bool isNext = true;

    // Answer
    QJsonValue jsonTucao;
};
