#pragma once

#include "core/VORANotificationNames.h"

// The notifications the download manager posts (sender: the manager) and the
// keys of their dictionaries. The queue-length notification is an application
// notification and keeps its name in VORANotificationNames.
namespace VORADownloadNotificationNames {
inline constexpr const char *downloadCountChange = VORANotificationNames::downloadCountChange;
inline constexpr char downloadUpdate[] = "DownloadUpdateNotification";
inline constexpr char downloadFinish[] = "DownloadFinishNotification";
inline constexpr char downloadFail[] = "DownloadFailNotification";
inline constexpr char comicHomePageViewUpdate[] = "ComicHomePageViewUpdateNotification";
inline constexpr char comicHomePageViewFail[] = "ComicHomePageViewFailNotification";
inline constexpr char downloadDetailUpdate[] = "DownloadDetailUpdateNotification";
inline constexpr char downloadDetailFinish[] = "DownloadDetailFinishNotification";
inline constexpr char downloadDetailFail[] = "DownloadDetailFailNotification";

// Keys.
inline constexpr char downloadCount[] = "DownloadCount"; // queue length, decimal text
inline constexpr char updateComicId[] = "DownloadUpdateComicId";
inline constexpr char updateChapterId[] = "DownloadUpdateChapterId";
inline constexpr char updateType[] = "DownloadUpdateType";

// Values of updateType.
inline constexpr char typeDownloadPage[] = "DownloadUpdateTypeDownloadPage";
inline constexpr char typeDownloadTucao[] = "DownloadUpdateTypeDownloadTucao";
} // namespace VORADownloadNotificationNames
