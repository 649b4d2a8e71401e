#pragma once

#include "store/VORABookMarkDTO.h"

#include <QString>

// The calls a reading session (and the reader's panels) make back into the
// reader screen: chapter jumps after a purchase or a dialog, and the sign-in
// and payment screens.
class VORAReadHomeViewControllerHooks
{
public:
    virtual ~VORAReadHomeViewControllerHooks() = default;

    virtual void skipeToChapterWithChapterId(const QString &chapterId) = 0;
    // Return to the chapter that was being read (the VIP seal dialog was refused).
    virtual void backCurrentChapterIndex() = 0;
    // Show the sign-in view (the user's jump types are already saved).
    virtual void createUserView() = 0;
    // Open the payment screen on the user view: 1 become a member, 2 top up coins.
    virtual void pushPayVC(int kind) = 0;
    // Open the bookmarked page (of any comic) in the reader.
    virtual void skipeToComicWithBookmark(const VORABookMarkDTO &bookmark) = 0;
};
