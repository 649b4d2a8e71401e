#pragma once

#include "net/NetError.h"
#include "net/VORATucao.h"

#include <QByteArray>
#include <QList>

#include <optional>

class VORAReadComicManager;

// What a reading session reports to the reader, always on the main thread.
// Every call names the session it comes from: a reader may hear from the
// chapter on screen and from the one it is opening.
class VORAReadComicManagerDelegate
{
public:
    virtual ~VORAReadComicManagerDelegate() = default;

    // error is null when the comic information and the page list are ready and
    // chapterIndex()/pageIndex() of the session are set.
    virtual void comicInfoLoadDidFinishedWithError(VORAReadComicManager *session, const NetError *error) = 0;
    // One page: its image bytes (none when it could not be loaded), its tucao
    // (none when they could not be fetched) and its index in the page list.
    virtual void pageLoadDidFinishedWithPage(VORAReadComicManager *session, const std::optional<QByteArray> &imageData,
                                             const std::optional<QList<VORATucao>> &tucao,
                                             int pageIndex) = 0;
};
