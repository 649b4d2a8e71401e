#include "core/VORAUtility.h"
#include "core/CoreLog.h"
#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "core/VORASystemConfig.h"

#include "platform/AppDirectories.h"
#include "platform/NotificationCenter.h"
#include "platform/Reachability.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QUrl>
#include <QUuid>

#include <cmath>
#include <limits>

// --- Directory layout ---

QString VORAUtility::getAppHomeDirectory()
{
    return AppDirectories::home();
}

QString VORAUtility::getDocumentDirectory()
{
    return AppDirectories::documents() + QLatin1Char('/');
}

QString VORAUtility::getUserDataDirectory()
{
    return AppDirectories::documents() + QLatin1Char('/') + VORASystemConfig::bundleIdentifier()
        + QStringLiteral("/userdata/");
}

QString VORAUtility::getLibraryApplicationSupportDirectory()
{
    return AppDirectories::applicationSupport() + QLatin1Char('/');
}

QString VORAUtility::getSupportDataDirectory()
{
    return AppDirectories::applicationSupport() + QLatin1Char('/')
        + VORASystemConfig::bundleIdentifier() + QStringLiteral("/supportdata/");
}

QString VORAUtility::getCacheDirectory()
{
    return AppDirectories::caches();
}

QString VORAUtility::getCachesDirectory()
{
    return AppDirectories::caches() + QLatin1Char('/');
}

QString VORAUtility::appCacheDirectory()
{
    return AppDirectories::caches() + QStringLiteral("/appCache/");
}

QString VORAUtility::pageCacheDirectory()
{
    return appCacheDirectory() + QStringLiteral("page/");
}

QString VORAUtility::comicCacheDirectory()
{
    return appCacheDirectory() + QStringLiteral("comic/");
}

QString VORAUtility::photoSkinDirectory()
{
    return appCacheDirectory() + QStringLiteral("photo/");
}

QString VORAUtility::commonCacheDirectory()
{
    // The doubled separator is kept: existing cache paths were built this way.
    return appCacheDirectory() + QStringLiteral("/common/");
}

QString VORAUtility::getUserWallPapersDirectory()
{
    return AppDirectories::caches() + QLatin1Char('/') + VORASystemConfig::bundleIdentifier()
        + QStringLiteral("/user_wallpapers/");
}

QString VORAUtility::getUserWallPapersDirectoryTem()
{
    return AppDirectories::caches() + QLatin1Char('/') + VORASystemConfig::bundleIdentifier()
        + QStringLiteral("/user_wallpapers_tmp/");
}

QString VORAUtility::comicBookDirectory()
{
    // Only very old tablet systems kept downloaded books under the app cache;
    // here they always live with the support data.
    return getSupportDataDirectory() + QStringLiteral("ComicBook/");
}

// --- Files ---

void VORAUtility::createDir(const QString &path)
{
    if (path.isEmpty() || QFileInfo::exists(path))
        return;
    if (!QDir().mkpath(path))
        qCWarning(lcCore) << "cannot create directory" << path;
}

bool VORAUtility::isFile(const QString &path)
{
    return !path.isEmpty() && QFileInfo::exists(path);
}

void VORAUtility::deleteDir(const QString &path)
{
    if (path.isEmpty())
        return;
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        QDir(path).removeRecursively();
    else if (info.exists() || info.isSymLink())
        QFile::remove(path);
}

void VORAUtility::createUserDataDirectory()
{
    if (!isFile(getUserDataDirectory()))
        createDir(getUserDataDirectory());
}

void VORAUtility::createComicBookDirectory()
{
    if (!isFile(comicBookDirectory()))
        createDir(comicBookDirectory());
}

void VORAUtility::createSupportDataDirectory()
{
    const QString dir = getSupportDataDirectory();
    if (isFile(dir))
        return;
    createDir(dir);
    addSkipBackupAttributeForIos51AndLaterToItemAtURL(dir);
}

bool VORAUtility::addSkipBackupAttributeForIos501ToItemAtURL(const QString &path)
{
    return isFile(path);
}

bool VORAUtility::addSkipBackupAttributeForIos51AndLaterToItemAtURL(const QString &path)
{
    if (!isFile(path)) {
        qCWarning(lcCore) << "Error excluding" << QFileInfo(path).fileName()
                          << "from backup: no such item";
        return false;
    }
    return true;
}

double VORAUtility::fileSizeOfDir(const QString &path)
{
    // Only the regular files directly in the directory count.
    qint64 bytes = 0;
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks);
    for (const QFileInfo &info : entries)
        bytes += info.size();
    return double(bytes) * (1.0 / 1048576.0);
}

std::optional<qint64> VORAUtility::totalDiskSpace()
{
    const QStorageInfo storage(AppDirectories::home());
    if (!storage.isValid() || !storage.isReady() || storage.bytesTotal() < 0)
        return std::nullopt;
    return storage.bytesTotal();
}

std::optional<qint64> VORAUtility::freeDiskSpace()
{
    const QStorageInfo storage(AppDirectories::home());
    if (!storage.isValid() || !storage.isReady() || storage.bytesFree() < 0)
        return std::nullopt;
    return storage.bytesFree();
}

QString VORAUtility::generateUUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

// --- Network ---

bool VORAUtility::isExistenceNetwork()
{
    const int status = Reachability::reachabilityWithHostName(VORASystemConfig::webHostName(),
                                                              VORASystemConfig::webHostPort())
                           ->currentReachabilityStatus();
    return status == 1 || status == 2;
}

// --- JSON ---

QJsonValue VORAUtility::isDataNSNull(const QJsonValue &value)
{
    return value.isNull() ? QJsonValue(QString()) : value;
}

QJsonValue VORAUtility::isNSArrayNull(const QJsonValue &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Undefined) : value;
}

QString VORAUtility::jsonString(const QJsonValue &v)
{
    return v.isString() ? v.toString() : QString();
}

namespace {

// The leading-number parse of a string: optional blanks, a sign, digits.
qint64 leadingInteger(const QString &s)
{
    int i = 0;
    const int n = s.size();
    while (i < n && s.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < n && (s.at(i) == QLatin1Char('+') || s.at(i) == QLatin1Char('-'))) {
        negative = s.at(i) == QLatin1Char('-');
        ++i;
    }
    qint64 value = 0;
    const qint64 limit = std::numeric_limits<qint64>::max();
    for (; i < n && s.at(i) >= QLatin1Char('0') && s.at(i) <= QLatin1Char('9'); ++i) {
        const int digit = s.at(i).unicode() - '0';
        if (value > (limit - digit) / 10)
            return negative ? std::numeric_limits<qint64>::min() : limit; // saturate
        value = value * 10 + digit;
    }
    return negative ? -value : value;
}

double leadingDouble(const QString &s)
{
    static const QRegularExpression number(
        QStringLiteral("^\\s*([+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?)"));
    const QRegularExpressionMatch m = number.match(s);
    if (!m.hasMatch())
        return 0.0;
    bool ok = false;
    const double d = m.captured(1).toDouble(&ok);
    return ok && std::isfinite(d) ? d : 0.0;
}

qint64 truncateDouble(double d)
{
    if (!std::isfinite(d))
        return 0;
    if (d >= 9.2e18)
        return std::numeric_limits<qint64>::max();
    if (d <= -9.2e18)
        return std::numeric_limits<qint64>::min();
    return qint64(d);
}

} // namespace

qint64 VORAUtility::jsonInteger(const QJsonValue &v)
{
    switch (v.type()) {
    case QJsonValue::Double: {
        // Integers beyond 2^53 keep their exact value when Qt parsed them as such.
        const qint64 exact = v.toInteger(std::numeric_limits<qint64>::min());
        if (exact != std::numeric_limits<qint64>::min() || v.toDouble() <= -9.2e18)
            return exact;
        return truncateDouble(v.toDouble());
    }
    case QJsonValue::String:
        return leadingInteger(v.toString());
    case QJsonValue::Bool:
        return v.toBool() ? 1 : 0;
    default:
        return 0;
    }
}

double VORAUtility::jsonDouble(const QJsonValue &v)
{
    switch (v.type()) {
    case QJsonValue::Double:
        return v.toDouble();
    case QJsonValue::String:
        return leadingDouble(v.toString());
    case QJsonValue::Bool:
        return v.toBool() ? 1.0 : 0.0;
    default:
        return 0.0;
    }
}

QJsonObject VORAUtility::jsonObject(const QJsonValue &v)
{
    return v.isObject() ? v.toObject() : QJsonObject();
}

QJsonArray VORAUtility::jsonArray(const QJsonValue &v)
{
    return v.isArray() ? v.toArray() : QJsonArray();
}

QDateTime VORAUtility::dateFromSeconds(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

// --- Validators ---

namespace {

bool wholeMatch(const QString &pattern, const QString &s)
{
    const QRegularExpression re(QRegularExpression::anchoredPattern(pattern));
    return re.match(s).hasMatch();
}

} // namespace

bool VORAUtility::isValidataEmail(const QString &s)
{
    return wholeMatch(QStringLiteral("[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,4}"), s);
}

bool VORAUtility::isValidataPhoneNumber(const QString &s)
{
    static const QString patterns[] = {
        QStringLiteral("^1(3[4-9]|47|5[017-9]|78|8[2-478])\\d{8}$"),
        QStringLiteral("^1(33|34|53|77|8[019])\\d{8}$"),
        QStringLiteral("^1(3[0-2]|45|5[256]|76|8[56])\\d{8}$"),
        QStringLiteral("^170\\d{8}$"),
    };
    for (const QString &p : patterns) {
        // \d stands for ASCII digits only, as in the original patterns' engine
        // for these inputs: a full-width digit is not a phone digit.
        QString ascii = p;
        ascii.replace(QStringLiteral("\\d"), QStringLiteral("[0-9]"));
        if (wholeMatch(ascii, s))
            return true;
    }
    return false;
}

bool VORAUtility::isNumberOnlyString(const QString &s)
{
    for (const QChar c : s) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

bool VORAUtility::isNumberAndLetterString(const QString &s)
{
    // Kept exactly as it has always been written (it only matches text that
    // literally holds " =" and blanks, so in practice it answers false).
    return wholeMatch(QStringLiteral("( =.* [a-zA-Z])( =.* [0-9])$"), s);
}

// --- URL escaping ---

QString VORAUtility::encodeUrlParameter(const QString &s)
{
    // Escapes only what may not stand in a URL (blanks, quotes, <>\^`{|}, control
    // and non-ASCII characters); reserved characters and "%" stay as they are.
    static const QByteArray kept("-._~!#$%&'()*+,/:;=?@[]");
    const QByteArray utf8 = s.toUtf8();
    QByteArray out;
    out.reserve(utf8.size());
    for (const char c : utf8) {
        const uchar u = uchar(c);
        if ((u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9')
            || kept.contains(c)) {
            out += c;
        } else {
            out += '%';
            out += "0123456789ABCDEF"[u >> 4];
            out += "0123456789ABCDEF"[u & 0x0f];
        }
    }
    return QString::fromLatin1(out);
}

QString VORAUtility::urlParameterEscape(const QString &s)
{
    // Everything but letters, digits and "-._~" is escaped, which includes
    // "!*'();:@&=+$,/?%#[]".
    return QString::fromLatin1(QUrl::toPercentEncoding(s));
}

// --- Drawing helpers ---

QSizeF VORAUtility::heightForText(const QString &text, const QFont &font, int lineBreakMode,
                                  qreal width)
{
    if (text.isEmpty() || width <= 0)
        return QSizeF(0, 0);
    constexpr qreal maxHeight = 4000;
    // Every line-break mode measures the text wrapped at word boundaries on as
    // many lines as it needs; truncating modes only change how it is drawn.
    Q_UNUSED(lineBreakMode);
    const QFontMetricsF metrics(font);
    const QRectF rect = metrics.boundingRect(QRectF(0, 0, width, maxHeight),
                                             Qt::TextWordWrap, text);
    return QSizeF(std::min(rect.width(), width), std::min(rect.height(), maxHeight));
}

QColor VORAUtility::getColorFromRed(int red, int green, int blue, int alpha)
{
    const auto unit = [](int v) { return std::clamp(v / 255.0, 0.0, 1.0); };
    return QColor::fromRgbF(float(unit(red)), float(unit(green)), float(unit(blue)),
                            float(unit(alpha)));
}

QImage VORAUtility::scaleToSize(const QSize &size, const QImage &image)
{
    if (image.isNull() || size.isEmpty())
        return QImage();
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// --- Notices and alerts ---

namespace {

void postUi(const char *name, const QVariantMap &userInfo)
{
    NotificationCenter::defaultCenter().post(QString::fromUtf8(name), nullptr, userInfo);
}

} // namespace

void VORAUtility::noticeWithStatusBarWithString(const QString &text)
{
    if (VORAAppGlobalData::shareAppGlobalData()->appStatus()->fromAppStore() == 1)
        return;
    postUi(VORANotificationNames::uiNoticeRequest,
           {{QStringLiteral("kind"), QStringLiteral("statusBar")},
            {QStringLiteral("text"), text},
            {QStringLiteral("duration"), 2.0}});
}

void VORAUtility::showLoadingViewWithParentView(QObject *parentView, const QString &text)
{
    postUi(VORANotificationNames::uiLoadingRequest,
           {{QStringLiteral("action"), QStringLiteral("show")},
            {QStringLiteral("parentView"), QVariant::fromValue(parentView)},
            {QStringLiteral("text"), text},
            {QStringLiteral("tag"), loadingViewTag}});
}

void VORAUtility::hideLoadingViewWithParentView(QObject *parentView)
{
    postUi(VORANotificationNames::uiLoadingRequest,
           {{QStringLiteral("action"), QStringLiteral("hide")},
            {QStringLiteral("parentView"), QVariant::fromValue(parentView)},
            {QStringLiteral("tag"), loadingViewTag}});
}

void VORAUtility::requestAtlerMessage(const QString &message, const QString &title,
                                      QObject *delegate)
{
    postUi(VORANotificationNames::uiAlertRequest,
           {{QStringLiteral("kind"), QStringLiteral("message")},
            {QStringLiteral("message"), message},
            {QStringLiteral("title"), title},
            {QStringLiteral("tag"), 0},
            {QStringLiteral("buttons"), QStringList{QStringLiteral("确定")}},
            {QStringLiteral("delegate"), QVariant::fromValue(delegate)}});
}

void VORAUtility::requestAlertMessage(const QString &message, const QString &title, int tag,
                                      const QString &cancelText, const QString &confirmText,
                                      QObject *delegate)
{
    postUi(VORANotificationNames::uiAlertRequest,
           {{QStringLiteral("kind"), QStringLiteral("confirm")},
            {QStringLiteral("message"), message},
            {QStringLiteral("title"), title},
            {QStringLiteral("tag"), tag},
            {QStringLiteral("buttons"), QStringList{cancelText, confirmText}},
            {QStringLiteral("delegate"), QVariant::fromValue(delegate)}});
}

void VORAUtility::requestCoinAlertMessage(const QString &message, const QString &title, int tag,
                                          QObject *delegate)
{
    postUi(VORANotificationNames::uiAlertRequest,
           {{QStringLiteral("kind"), QStringLiteral("coin")},
            {QStringLiteral("message"), message},
            {QStringLiteral("title"), title},
            {QStringLiteral("tag"), tag},
            {QStringLiteral("buttons"),
             QStringList{QStringLiteral("取消"), QStringLiteral("购买此章节"),
                         QStringLiteral("购买本书")}},
            {QStringLiteral("delegate"), QVariant::fromValue(delegate)}});
}

void VORAUtility::openMBProgressHUDView(const QString &text, double delaySeconds)
{
    postUi(VORANotificationNames::uiTextPanelRequest,
           {{QStringLiteral("text"), text}, {QStringLiteral("delay"), delaySeconds}});
}
