#pragma once

#include "platform/Reachability.h"

// Every name of the application notifications posted through
// NotificationCenter::defaultCenter(), and of the requests that C++ code sends
// to the app shell's overlay layer (alerts, notices, loading views; see
// docs/app-home.md for their userInfo keys). Code posts and observes these
// constants, never a literal of its own.
namespace VORANotificationNames {
inline constexpr char bookshelfLatestCountChange[] = "BookshelfLatestCountChangeNotification";
inline constexpr char downloadCountChange[] = "DownloadCountChangeNotification";
inline constexpr char userViewPostInfo[] = "UserViewPostInfo";
inline constexpr char changeApplicationToOrientaion[] = "ChangeApplicationToOrientaionNotification";
inline constexpr char applicationExit[] = "ApplicationExitNotification";
inline constexpr char safariSuccess[] = "safariSuccess";
inline constexpr char weiBoSignInSucess[] = "WeiBoSignInSucess";
// Posted by the platform's reachability monitor, which names it.
inline constexpr const char *networkReachabilityChanged = Reachability::changedNotification;
// The reader's bars shown or hidden: the tucao menu follows ("KTuCaoViewBOOLValue": true hides it).
inline constexpr char isHiddenTuCao[] = "KIsHiddenTuCao";
// A long press on a tucao of one's own ("TuCaoView": the pressed view).
inline constexpr char popUpTucaoEditView[] = "PopUpTucaoEditView";
// A chapter purchase succeeded ("comicId", "chapters": the ids bought).
inline constexpr char buySuccessPost[] = "BuySuccessPost";
// A top-up of coins or membership succeeded.
inline constexpr char buyVIPorCoinSuccess[] = "BuyVIPorCoinSuccess";
// A touch began / ended on the feed's slide strip: its timer stops / restarts.
inline constexpr char recommentInvalidateNSTimer[] = "RecommentInvalidateNSTimer";
inline constexpr char recommentIsValueNSTimer[] = "RecommentIsValueNSTimer";

// The download manager's progress (sender: the manager). The lists hear
// DownloadUpdate/Finish/Fail; the comic detail page and the download detail
// hear their own pair only while they are shown.
inline constexpr char downloadUpdate[] = "DownloadUpdateNotification";
inline constexpr char downloadFinish[] = "DownloadFinishNotification";
inline constexpr char downloadFail[] = "DownloadFailNotification";
inline constexpr char comicHomePageViewUpdate[] = "ComicHomePageViewUpdateNotification";
inline constexpr char comicHomePageViewFail[] = "ComicHomePageViewFailNotification";
inline constexpr char downloadDetailUpdate[] = "DownloadDetailUpdateNotification";
inline constexpr char downloadDetailFinish[] = "DownloadDetailFinishNotification";
inline constexpr char downloadDetailFail[] = "DownloadDetailFailNotification";
// Their userInfo keys, and the values of downloadUpdateType.
inline constexpr char downloadCount[] = "DownloadCount"; // queue length, decimal text
inline constexpr char downloadUpdateComicId[] = "DownloadUpdateComicId";
inline constexpr char downloadUpdateChapterId[] = "DownloadUpdateChapterId";
inline constexpr char downloadUpdateType[] = "DownloadUpdateType";
inline constexpr char downloadTypePage[] = "DownloadUpdateTypeDownloadPage";
inline constexpr char downloadTypeTucao[] = "DownloadUpdateTypeDownloadTucao";

// Requests to the app shell (no screen in the core).
inline constexpr char uiNoticeRequest[] = "VORAUiNoticeRequest";
inline constexpr char uiLoadingRequest[] = "VORAUiLoadingRequest";
inline constexpr char uiAlertRequest[] = "VORAUiAlertRequest";
inline constexpr char uiTextPanelRequest[] = "VORAUiTextPanelRequest";
} // namespace VORANotificationNames
