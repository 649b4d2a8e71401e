#pragma once

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <optional>

class QObject;

// Stateless helpers: the directory layout, file and disk operations, the
// network-existence test, validators, the tolerant JSON readers, and the
// requests for notices and alerts that the app shell shows.
class VORAUtility
{
public:
    VORAUtility() = delete;

    // --- Directory layout (strings with "/" separators) ---
    static QString getAppHomeDirectory();
    static QString getDocumentDirectory();                  // Documents + "/"
    static QString getUserDataDirectory();                  // Documents/<bundle id>/userdata/
    static QString getLibraryApplicationSupportDirectory(); // Application Support + "/"
    static QString getSupportDataDirectory();               // Application Support/<bundle id>/supportdata/
    static QString getCacheDirectory();                     // Caches (no trailing separator)
    static QString getCachesDirectory();                    // Caches + "/"
    static QString appCacheDirectory();                     // Caches/appCache/
    static QString pageCacheDirectory();                    // app cache + "page/"
    static QString comicCacheDirectory();                   // app cache + "comic/"
    static QString photoSkinDirectory();                    // app cache + "photo/"
    static QString commonCacheDirectory();                  // app cache + "/common/" (doubled "/")
    static QString getUserWallPapersDirectory();            // Caches/<bundle id>/user_wallpapers/
    static QString getUserWallPapersDirectoryTem();         // Caches/<bundle id>/user_wallpapers_tmp/
    static QString comicBookDirectory();                    // support data + "ComicBook/"

    // --- Files ---
    static void createDir(const QString &path); // mkpath unless something exists there
    static bool isFile(const QString &path);    // anything (file or directory) exists
    static void deleteDir(const QString &path); // file or whole tree; errors ignored
    static void createUserDataDirectory();
    static void createComicBookDirectory();
    static void createSupportDataDirectory();
    // Backup exclusion has no meaning on this platform: both only check that the
    // item exists and return that.
    static bool addSkipBackupAttributeForIos501ToItemAtURL(const QString &path);
    static bool addSkipBackupAttributeForIos51AndLaterToItemAtURL(const QString &path);
    // Bytes of the regular files directly in the directory, in MiB. Files in
    // subdirectories do not count (the page cache is flat).
    static double fileSizeOfDir(const QString &path);
    static std::optional<qint64> totalDiskSpace();
    static std::optional<qint64> freeDiskSpace();
    static QString generateUUID();

    // --- Network ---
    // True when the web host (VORASystemConfig::webHostName()/webHostPort())
    // is reachable: Reachability answers 1 or 2.
    static bool isExistenceNetwork();

    // --- JSON ---
    static QJsonValue isDataNSNull(const QJsonValue &value);  // null -> ""
    static QJsonValue isNSArrayNull(const QJsonValue &value); // null -> undefined
    // A string only when the value is a JSON string; anything else gives "".
    static QString jsonString(const QJsonValue &v);
    // Numbers truncated toward zero; strings parsed by their leading integer
    // ("12abc" -> 12, " -3" -> -3); true -> 1; anything else 0.
    static qint64 jsonInteger(const QJsonValue &v);
    // Numbers; strings parsed by their leading number; true -> 1; else 0.0.
    static double jsonDouble(const QJsonValue &v);
    static QJsonObject jsonObject(const QJsonValue &v); // empty unless an object
    static QJsonArray jsonArray(const QJsonValue &v);   // empty unless an array
    static QDateTime dateFromSeconds(qint64 seconds);   // UTC

    // --- Validators ---
    static bool isValidataEmail(const QString &s);
    static bool isValidataPhoneNumber(const QString &s);
    static bool isNumberOnlyString(const QString &s);
    static bool isNumberAndLetterString(const QString &s);

    // --- URL escaping ---
    static QString encodeUrlParameter(const QString &s);
    static QString urlParameterEscape(const QString &s);

    // --- Drawing helpers (need a QGuiApplication) ---
    static QSizeF heightForText(const QString &text, const QFont &font, int lineBreakMode,
                                qreal width);
    static QColor getColorFromRed(int red, int green, int blue, int alpha);
    static QImage scaleToSize(const QSize &size, const QImage &image);

    // --- Notices and alerts: requests to the app shell (see docs/app-home.md) ---
    static void noticeWithStatusBarWithString(const QString &text);
    static void showLoadingViewWithParentView(QObject *parentView, const QString &text);
    static void hideLoadingViewWithParentView(QObject *parentView);
    static void requestAtlerMessage(const QString &message, const QString &title,
                                    QObject *delegate);
    static void requestAlertMessage(const QString &message, const QString &title, int tag,
                                    const QString &cancelText, const QString &confirmText,
                                    QObject *delegate);
    static void requestCoinAlertMessage(const QString &message, const QString &title, int tag,
                                        QObject *delegate);
    // A text-only panel (no spinner) over the window, hidden after delaySeconds:
    // the short indicators of the reader and its tucao ("已经是第一章了"...).
    static void openMBProgressHUDView(const QString &text, double delaySeconds);

    static constexpr int loadingViewTag = 100202;
};
