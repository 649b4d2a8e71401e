#pragma once

// The screen objects of the subsystem libraries as QML types of the app's
// module "Quorin". The libraries stay free of QML: each struct names one of
// their classes for the type registrar (QML_FOREIGN), which reads the class
// from the library's metatypes (qt_extract_metatypes in its CMakeLists.txt).
// QML never creates them: C++ makes them and QML draws them, so each is
// uncreatable and usable as a property type ("property VORASortView sort").

#include "account/VORAPayPackageListModel.h"
#include "account/VORAPayViewController.h"
#include "account/VORAWalletHistoryModel.h"
#include "account/VORAForgetPasswordViewController.h"
#include "account/VORAHwLoginViewController.h"
#include "account/VORASignInUserView.h"
#include "account/VORASignUpViewController.h"
#include "account/VORAUserViewController.h"
#include "catalogue/VORARecommentView.h"
#include "catalogue/VORANetWorkNoLinking.h"
#include "catalogue/VORASortView.h"
#include "catalogue/VORAComicListModel.h"
#include "catalogue/VORASearchView.h"
#include "catalogue/VORACloudView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "catalogue/VORAChapterView.h"
#include "reader/VORAReadHomePageViewController.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPageViewListModel.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAPictureScrollView.h"
#include "reader/VORAChapterManager.h"
#include "reader/VORAChapterListModel.h"
#include "reader/VORABookmarkManager.h"
#include "reader/VORABookmarkListModel.h"
#include "reader/VORAAdjustLuminanceView.h"
#include "reader/VORAReaderSidePanel.h"
#include "store/VORABoolshelf.h"
#include "store/VORABookShelfListModel.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoEditManager.h"
#include "store/ReadingPlaceScreen.h"
#include "store/VORABookMarkView.h"
#include "store/VORARecendRead.h"

#include <QtQml/qqml.h>

// account: the wallet
struct VORAPayViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPayViewController)
    QML_NAMED_ELEMENT(VORAPayViewController)
    QML_UNCREATABLE("the root controller makes the payment screen")
};
struct VORAPayPackageListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPayPackageListModel)
    QML_NAMED_ELEMENT(VORAPayPackageListModel)
    QML_UNCREATABLE("the payment screen owns its packages")
};
struct VORAWalletHistoryModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAWalletHistoryModel)
    QML_NAMED_ELEMENT(VORAWalletHistoryModel)
    QML_UNCREATABLE("the root controller makes the history lists")
};

// account: the user panel and its forms
struct VORAUserViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAUserViewController)
    QML_NAMED_ELEMENT(VORAUserViewController)
    QML_UNCREATABLE("the root controller makes the user panel")
};
struct VORAAccountFormForeign
{
    Q_GADGET
    QML_FOREIGN(VORAAccountForm)
    QML_NAMED_ELEMENT(VORAAccountForm)
    QML_UNCREATABLE("the base of the user panel's forms")
};
struct VORAPhoneCodeFormForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPhoneCodeForm)
    QML_NAMED_ELEMENT(VORAPhoneCodeForm)
    QML_UNCREATABLE("the base of the forms proven by a text-message code")
};
struct VORASignInUserViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORASignInUserView)
    QML_NAMED_ELEMENT(VORASignInUserView)
    QML_UNCREATABLE("the user panel owns its sign-in form")
};
struct VORASignUpViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORASignUpViewController)
    QML_NAMED_ELEMENT(VORASignUpViewController)
    QML_UNCREATABLE("the user panel owns its registration form")
};
struct VORAForgetPasswordViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAForgetPasswordViewController)
    QML_NAMED_ELEMENT(VORAForgetPasswordViewController)
    QML_UNCREATABLE("the user panel owns its password reset form")
};
struct VORAHwLoginViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAHwLoginViewController)
    QML_NAMED_ELEMENT(VORAHwLoginViewController)
    QML_UNCREATABLE("the user panel owns its passport form")
};

// store: the bookshelf
struct VORABoolshelfForeign
{
    Q_GADGET
    QML_FOREIGN(VORABoolshelf)
    QML_NAMED_ELEMENT(VORABoolshelf)
    QML_UNCREATABLE("the root controller makes the bookshelf screen")
};
struct VORABookShelfListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORABookShelfListModel)
    QML_NAMED_ELEMENT(VORABookShelfListModel)
    QML_UNCREATABLE("the bookshelf screen owns its rows")
};

// catalogue
struct VORARecommentViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORARecommentView)
    QML_NAMED_ELEMENT(VORARecommentView)
    QML_UNCREATABLE("the root controller makes the feed")
};
struct VORANetWorkNoLinkingForeign
{
    Q_GADGET
    QML_FOREIGN(VORANetWorkNoLinking)
    QML_NAMED_ELEMENT(VORANetWorkNoLinking)
    QML_UNCREATABLE("a list screen owns its no-network panel")
};
struct VORASortViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORASortView)
    QML_NAMED_ELEMENT(VORASortView)
    QML_UNCREATABLE("the root controller makes the category screen")
};
// A keyword of the search screen's cloud, and the cloud's list of them.
struct VORACloudButtonForeign
{
    Q_GADGET
    QML_FOREIGN(VORACloudButton)
    QML_VALUE_TYPE(cloudButton)
};
struct VORACloudButtonListForeign
{
    Q_GADGET
    QML_FOREIGN(QList<VORACloudButton>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(VORACloudButton)
};
// A button of the category screen's menus, and the lists of them it offers.
struct VORASortButtonForeign
{
    Q_GADGET
    QML_FOREIGN(VORASortButton)
    QML_VALUE_TYPE(sortButton)
};
struct VORASortButtonListForeign
{
    Q_GADGET
    QML_FOREIGN(QList<VORASortButton>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(VORASortButton)
};
struct VORAComicListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAComicListModel)
    QML_NAMED_ELEMENT(VORAComicListModel)
    QML_UNCREATABLE("a list screen owns its comics")
};
struct VORASearchViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORASearchView)
    QML_NAMED_ELEMENT(VORASearchView)
    QML_UNCREATABLE("the root controller makes the search screen")
};
struct VORACloudViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORACloudView)
    QML_NAMED_ELEMENT(VORACloudView)
    QML_UNCREATABLE("the search screen owns its keyword cloud")
};
struct VORAComicHomePageViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORAComicHomePageView)
    QML_NAMED_ELEMENT(VORAComicHomePageView)
    QML_UNCREATABLE("the root controller makes the detail page")
};
struct VORAChapterViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORAChapterView)
    QML_NAMED_ELEMENT(VORAChapterView)
    QML_UNCREATABLE("the detail page owns its chapter list")
};

// reader
struct VORAReadHomePageViewControllerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAReadHomePageViewController)
    QML_NAMED_ELEMENT(VORAReadHomePageViewController)
    QML_UNCREATABLE("the root controller opens the reader")
};
struct VORAComicViewManagerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAComicViewManager)
    QML_NAMED_ELEMENT(VORAComicViewManager)
    QML_UNCREATABLE("the reader owns its reading surface")
};
struct VORAPageViewListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPageViewListModel)
    QML_NAMED_ELEMENT(VORAPageViewListModel)
    QML_UNCREATABLE("the reading surface owns its page views")
};
struct VORAPictureImageViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPictureImageView)
    QML_NAMED_ELEMENT(VORAPictureImageView)
    QML_UNCREATABLE("the reading surface makes its page views")
};
struct VORAPictureScrollViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORAPictureScrollView)
    QML_NAMED_ELEMENT(VORAPictureScrollView)
    QML_UNCREATABLE("a page view owns its zooming view")
};
struct VORAChapterManagerForeign
{
    Q_GADGET
    QML_FOREIGN(VORAChapterManager)
    QML_NAMED_ELEMENT(VORAChapterManager)
    QML_UNCREATABLE("the reader makes its chapter panel")
};
struct VORAChapterListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAChapterListModel)
    QML_NAMED_ELEMENT(VORAChapterListModel)
    QML_UNCREATABLE("the chapter panel owns its rows")
};
struct VORABookmarkManagerForeign
{
    Q_GADGET
    QML_FOREIGN(VORABookmarkManager)
    QML_NAMED_ELEMENT(VORABookmarkManager)
    QML_UNCREATABLE("the reader makes its bookmark panel")
};
struct VORABookmarkListModelForeign
{
    Q_GADGET
    QML_FOREIGN(VORABookmarkListModel)
    QML_NAMED_ELEMENT(VORABookmarkListModel)
    QML_UNCREATABLE("the bookmark panel owns its rows")
};
struct VORAAdjustLuminanceViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORAAdjustLuminanceView)
    QML_NAMED_ELEMENT(VORAAdjustLuminanceView)
    QML_UNCREATABLE("the reader makes its brightness panel")
};
struct VORAReaderSidePanelForeign
{
    Q_GADGET
    QML_FOREIGN(VORAReaderSidePanel)
    QML_NAMED_ELEMENT(VORAReaderSidePanel)
    QML_UNCREATABLE("the reader makes its side panels")
};

// tucao
struct VORATucaoPlaybackForeign
{
    Q_GADGET
    QML_FOREIGN(VORATucaoPlayback)
    QML_NAMED_ELEMENT(VORATucaoPlayback)
    QML_UNCREATABLE("a page view owns its tucao playback")
};
struct VORATuCaoMenuViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORATuCaoMenuView)
    QML_NAMED_ELEMENT(VORATuCaoMenuView)
    QML_UNCREATABLE("the reading surface owns the tucao menu bar")
};
struct VORATuCaoInputViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORATuCaoInputView)
    QML_NAMED_ELEMENT(VORATuCaoInputView)
    QML_UNCREATABLE("the reader owns the tucao input view")
};
struct VORATuCaoEditManagerForeign
{
    Q_GADGET
    QML_FOREIGN(VORATuCaoEditManager)
    QML_NAMED_ELEMENT(VORATuCaoEditManager)
    QML_UNCREATABLE("the reader makes one editing act at a time")
};

// store: bookmarks and recent reading
struct ReadingPlaceScreenForeign
{
    Q_GADGET
    QML_FOREIGN(ReadingPlaceScreen)
    QML_NAMED_ELEMENT(ReadingPlaceScreen)
    QML_UNCREATABLE("the base of the bookmarks and recent-reading screens")
};
struct ReadingPlaceListModelForeign
{
    Q_GADGET
    QML_FOREIGN(ReadingPlaceListModel)
    QML_NAMED_ELEMENT(ReadingPlaceListModel)
    QML_UNCREATABLE("a bookmarks or recent-reading screen owns its rows")
};
struct VORABookMarkViewForeign
{
    Q_GADGET
    QML_FOREIGN(VORABookMarkView)
    QML_NAMED_ELEMENT(VORABookMarkView)
    QML_UNCREATABLE("the root controller makes the bookmarks screen")
};
struct VORARecendReadForeign
{
    Q_GADGET
    QML_FOREIGN(VORARecendRead)
    QML_NAMED_ELEMENT(VORARecendRead)
    QML_UNCREATABLE("the root controller makes the recent-reading screen")
};
