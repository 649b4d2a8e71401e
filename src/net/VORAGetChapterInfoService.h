#pragma once

#include "net/VORAHttpBaseWebService.h"
#include "net/VORAPageInfoDTO.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// The page list of a chapter; the answer object is kept as chapterData.
class VORAGetChapterInfoService : public VORAHttpBaseWebService
{
public:
    using VORAHttpBaseWebService::VORAHttpBaseWebService;

    QString path() const override;
    Parameters parameter() const override;
    void parseResponseString(const QString &responseString) override;

    // The pages of the answer, none when there was no answer object.
    std::optional<QList<VORAPageInfoDTO>> pageList() const;

    // Request
    QString chapterId;
    bool isWebp = false;

    // Answer
    std::optional<QJsonObject> chapterData;
};
