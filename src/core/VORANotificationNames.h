#pragma once

// Names of the application notifications posted through
// NotificationCenter::defaultCenter() by more than one library, and of the
// requests that C++ code sends to the app shell's overlay layer (alerts,
// notices, loading views; see docs/app-home.md for their userInfo keys).
namespace VORANotificationNames {
inline constexpr char bookshelfLatestCountChange[] = "BookshelfLatestCountChangeNotification";
inline constexpr char downloadCountChange[] = "DownloadCountChangeNotification";
inline constexpr char userViewPostInfo[] = "UserViewPostInfo";
inline constexpr char changeApplicationToOrientaion[] = "ChangeApplicationToOrientaionNotification";
inline constexpr char applicationExit[] = "ApplicationExitNotification";
inline constexpr char safariSuccess[] = "safariSuccess";
inline constexpr char weiBoSignInSucess[] = "WeiBoSignInSucess";
inline constexpr char networkReachabilityChanged[] = "kNetworkReachabilityChangedNotification";
// The reader's bars shown or hidden: the tucao menu follows ("KTuCaoViewBOOLValue": true hides it).
inline constexpr char isHiddenTuCao[] = "KIsHiddenTuCao";

// Requests to the app shell (no screen in the core).
inline constexpr char uiNoticeRequest[] = "VORAUiNoticeRequest";
inline constexpr char uiLoadingRequest[] = "VORAUiLoadingRequest";
inline constexpr char uiAlertRequest[] = "VORAUiAlertRequest";
inline constexpr char uiTextPanelRequest[] = "VORAUiTextPanelRequest";
} // namespace VORANotificationNames
