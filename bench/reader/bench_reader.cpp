// The comic reader in the real app shell, offscreen with the software
// renderer, against the in-process reference site (the first chapter of comic
// 10001 made 200 pages long). Every figure is timed to the first frame swapped
// with the page's image on screen (tiles loaded, page at rest in the strip),
// next to a bare Qt Quick Image showing the same page file in the same run.
// Prints one JSON line per figure:
//   reader_chapter_tap_to_first_page  detail page's chapter tap -> page 1 drawn
//   reader_page_turn_prefetched       the strip's page move at the end of a swipe
//                                     -> next page drawn (its image decoded ahead)
//   reader_page_jump_not_loaded       slider jump far away -> that page drawn
//   reader_memory_200_pages           VmHWM and VmRSS after 20, 100, 200 pages
//   reader_main_thread_stall          longest gap of a 1 ms timer while reading
//   reader_tucao_playback             (--tucao) frame time of page 1 playing its
//                                     tucao next to the same page without them
//
//   bench_reader [--turns N] [--jumps N] [--peer-runs N] [--passes N] [--tucao] [--tucao-seconds S]

#include "QuorinSite.h"
#include "VORAAppDelegate.h"
#include "VORAOverlayLayer.h"
#include "VORARootViewController.h"
#include "catalogue/VORAChapterView.h"
#include "catalogue/VORAComicHomePageView.h"
#include "core/VORAUserConfig.h"
#include "reader/VORAComicViewManager.h"
#include "reader/VORAPageImageCache.h"
#include "reader/VORAPictureImageView.h"
#include "reader/VORAReadHomePageViewController.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickView>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

const QString comicId = QStringLiteral("10001");
const QString longChapter = QStringLiteral("40001");
constexpr int longChapterPages = 200;

void print(const QJsonObject &line)
{
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
}

double percentile(QList<double> v, double p)
{
    if (v.isEmpty())
        return -1;
    std::sort(v.begin(), v.end());
    const qsizetype i = std::clamp<qsizetype>(qsizetype(p * double(v.size() - 1) + 0.5), 0, v.size() - 1);
    return v.at(i);
}
double median(const QList<double> &v) { return percentile(v, 0.5); }

double round2(double v) { return std::round(v * 100) / 100; }

// "VmRSS" / "VmHWM" of this process, in KiB.
qint64 procStatusKiB(const char *field)
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray want = QByteArray(field) + ':';
    for (const QByteArray &line : f.readAll().split('\n')) {
        if (line.startsWith(want))
            return line.mid(want.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// Runs the event loop until pred() holds (true) or the time is up (false).
bool waitUntil(const std::function<bool()> &pred, int timeoutMs)
{
    if (pred())
        return true;
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(2);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (pred())
            loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    poll.start();
    loop.exec();
    return pred();
}

void idle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// The longest gap between the ticks of a 1 ms timer on the main thread.
class StallWatch : public QObject
{
public:
    StallWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            const qint64 now = m_clock.nsecsElapsed();
            m_longest = std::max(m_longest, now - m_last);
            m_windowLongest = std::max(m_windowLongest, now - m_last);
            m_last = now;
            ++m_ticks;
        });
    }
    void start()
    {
        m_longest = 0;
        m_ticks = 0;
        m_clock.start();
        m_last = 0;
        m_timer.start();
    }
    void stop() { m_timer.stop(); }
    double longestMs() const { return m_longest / 1e6; }
    // The longest gap since the last call.
    double takeWindowLongestMs()
    {
        const double ms = m_windowLongest / 1e6;
        m_windowLongest = 0;
        return ms;
    }
    double elapsedMs() const { return m_clock.nsecsElapsed() / 1e6; }
    qint64 ticks() const { return m_ticks; }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    qint64 m_longest = 0;
    qint64 m_windowLongest = 0;
    qint64 m_ticks = 0;
};

// Frame-swap timing of one action: the first frame after it, and the first
// frame at which ready() held.
struct FrameTiming
{
    double firstFrameMs = -1;
    bool readyOnFirstFrame = false;
    double readyMs = -1;
    int frames = 0;
};

FrameTiming timeToFrame(QQuickWindow *window, const std::function<void()> &act, const std::function<bool()> &ready,
                        int timeoutMs)
{
    FrameTiming r;
    QElapsedTimer clock;
    QEventLoop loop;
    const auto c = QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&] {
        const double ms = clock.nsecsElapsed() / 1e6;
        const bool ok = ready();
        ++r.frames;
        if (r.firstFrameMs < 0) {
            r.firstFrameMs = ms;
            r.readyOnFirstFrame = ok;
        }
        if (ok) {
            r.readyMs = ms;
            loop.quit();
        }
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    clock.start();
    act();
    window->update();
    loop.exec();
    QObject::disconnect(c);
    return r;
}

QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    if (!root)
        return nullptr;
    QList<QQuickItem *> queue{root};
    while (!queue.isEmpty()) {
        QQuickItem *it = queue.takeFirst();
        if (it->objectName() == name && it->isVisible())
            return it;
        queue.append(it->childItems());
    }
    return nullptr;
}

QList<QQuickItem *> findItems(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    QList<QQuickItem *> queue{root};
    while (!queue.isEmpty()) {
        QQuickItem *it = queue.takeFirst();
        if (it->objectName() == name)
            found.append(it);
        queue.append(it->childItems());
    }
    return found;
}

struct App
{
    std::unique_ptr<VORAOverlayLayer> layer = std::make_unique<VORAOverlayLayer>();
    std::unique_ptr<VORAAppDelegate> delegate;

    App()
    {
        delegate = std::make_unique<VORAAppDelegate>(layer.get());
        delegate->setShowsWindow(true);
        delegate->setInitialSize(1024, 768);
        delegate->didFinishLaunching();
    }
    ~App()
    {
        delegate.reset();
        layer.reset();
    }
    VORARootViewController *root() const { return delegate->rootViewController(); }
    VORAReadHomePageViewController *reader() const { return root()->readHomePageViewController(); }
    VORAComicViewManager *strip() const { return reader() ? reader()->comicViewManager() : nullptr; }
    QQuickWindow *window() const { return delegate->window(); }
    QQuickItem *item(const QString &name) const { return findItem(window()->contentItem(), name); }

    // Page `index` is what the window shows: the strip at rest on it, the
    // page decoded, every tile loaded and the image not transparent.
    bool pageOnScreen(int index, bool opaque = false) const
    {
        VORAComicViewManager *m = strip();
        if (!m || m->pageIndex() != index)
            return false;
        VORAPictureImageView *view = m->pageViewAt(index);
        if (!view || view->state() != VORAPictureImageView::Shown)
            return false;
        QQuickItem *stripItem = item(QStringLiteral("readerStrip"));
        if (!stripItem || qAbs(stripItem->property("contentX").toReal() - index * m->viewWidth()) > 0.5)
            return false;
        QQuickItem *page = item(QStringLiteral("readerPage%1").arg(index));
        if (!page)
            return false;
        const QList<QQuickItem *> tiles = findItems(page, QStringLiteral("readerPageTile"));
        if (tiles.isEmpty() || tiles.size() != view->tiles().size())
            return false;
        for (QQuickItem *tile : tiles) {
            if (tile->property("status").toInt() != 1 /* Image.Ready */ || tile->width() <= 0)
                return false;
        }
        QQuickItem *container = findItem(page, QStringLiteral("readerImageContainer"));
        if (!container)
            return false;
        return opaque ? container->opacity() >= 0.999 : container->opacity() > 0;
    }
};

// The peer: a bare QQuickView with one asynchronous Image of the page's size.
struct Peer
{
    QQuickView view;
    QTemporaryDir dir;

    Peer(qreal imageWidth, qreal imageHeight)
    {
        const QString qml = dir.filePath(QStringLiteral("Peer.qml"));
        QFile f(qml);
        f.open(QIODevice::WriteOnly);
        f.write(QStringLiteral("import QtQuick\nRectangle { width: 1024; height: 768; color: \"black\"\n"
                               "  property alias source: img.source\n  property alias imageStatus: img.status\n"
                               "  Image { id: img; asynchronous: true; cache: false; width: %1; height: %2;"
                               " fillMode: Image.Stretch } }\n")
                    .arg(imageWidth)
                    .arg(imageHeight)
                    .toUtf8());
        f.close();
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(1024, 768);
        view.setSource(QUrl::fromLocalFile(qml));
        view.show();
    }
    // Setting the source to the first frame swapped with the image ready.
    QList<double> time(const QString &file, int runs)
    {
        QList<double> out;
        QQuickItem *root = view.rootObject();
        if (!root)
            return out;
        for (int i = 0; i < runs; ++i) {
            root->setProperty("source", QUrl());
            waitUntil([&] { return root->property("imageStatus").toInt() == 0; }, 2000);
            idle(30);
            const FrameTiming t = timeToFrame(
                &view, [&] { root->setProperty("source", QUrl::fromLocalFile(file)); },
                [&] { return root->property("imageStatus").toInt() == 1; }, 10000);
            out.append(t.readyMs);
        }
        return out;
    }
};

QString writeFile(const QTemporaryDir &dir, const QString &name, const QByteArray &bytes)
{
    const QString path = dir.filePath(name);
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return {};
    f.write(bytes);
    return path;
}

QJsonObject peerFields(const QList<double> &peer, double figure)
{
    const double p = median(peer);
    return {{"peer", "bare QML Image (asynchronous) of the same page file: source set to first frame ready"},
            {"peer_ms", round2(p)},
            {"ratio", p > 0 && figure >= 0 ? round2(figure / p) : -1}};
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "*.debug=false;quorin.*.info=false;qt.*.warning=false");
    QTemporaryDir home;
    qputenv("QUORIN_HOME", home.filePath(QStringLiteral("app")).toUtf8());

    QGuiApplication app(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QStringList args = app.arguments();
    auto intArg = [&](const char *name, int fallback) {
        const qsizetype i = args.indexOf(QLatin1String(name));
        return i >= 0 && i + 1 < args.size() ? std::max(1, args.at(i + 1).toInt()) : fallback;
    };
    const int turns = std::min(intArg("--turns", longChapterPages - 1), longChapterPages - 1);
    const int jumps = intArg("--jumps", 10);
    const int peerRuns = intArg("--peer-runs", 15);
    const int passes = intArg("--passes", 1);
    const bool tucao = args.contains(QStringLiteral("--tucao"));
    const int tucaoSeconds = intArg("--tucao-seconds", 15);

    QuorinSiteOptions options{home.filePath(QStringLiteral("site"))};
    options.longChapterPages = longChapterPages;
    QuorinSite site(options);
    if (site.listen() == 0) {
        QTextStream(stderr) << "bench_reader: the reference site did not start\n";
        return 1;
    }
    qputenv("QUORIN_API_BASE", site.baseUrl().toString().toUtf8());
    VORAUserConfig::shareUserConfigInstance()->setIsVerticalScreen(false); // landscape, 1024 × 768

    App a;
    if (!a.window()) {
        QTextStream(stderr) << "bench_reader: no window\n";
        return 1;
    }
    auto fail = [](const char *what) {
        QTextStream(stderr) << "bench_reader: " << what << "\n";
        return 1;
    };
    a.root()->showHomePage();
    idle(500);

    // --- 3. The detail page's chapter tap to page 1 drawn ---
    a.root()->openComicDetail(comicId, QString(), QString());
    VORAComicHomePageView *detail = a.root()->comicHomePageView();
    if (!waitUntil([&] { return detail && detail->state() == VORAComicHomePageView::Shown; }, 15000))
        return fail("the detail page did not show");
    const int row = int(detail->chapterView()->chapterIds().indexOf(longChapter));
    const QString rowName = QStringLiteral("chapter%1").arg(row);
    if (row < 0 || !waitUntil([&] { return a.item(rowName) != nullptr; }, 10000))
        return fail("no chapter row for the long chapter");
    QList<double> tapTimes;
    for (int i = 0; i < 5; ++i) {
        if (i > 0) {
            a.reader()->backPreviousPage();
            if (!waitUntil([&] { return !a.reader() && a.item(rowName); }, 10000))
                return fail("the reader did not close");
            idle(300);
        }
        QQuickItem *cell = a.item(rowName);
        a.window()->grabWindow();
        const QPoint at = cell->mapToScene(QPointF(cell->width() / 2, cell->height() / 2)).toPoint();
        const FrameTiming t = timeToFrame(
            a.window(), [&] { QTest::mouseClick(a.window(), Qt::LeftButton, {}, at); },
            [&] { return a.reader() && a.reader()->chapterId() == longChapter && a.pageOnScreen(0); }, 30000);
        if (t.readyMs < 0)
            return fail("page 1 did not show after the chapter tap");
        tapTimes.append(t.readyMs);
    }
    VORAReadHomePageViewController *reader = a.reader();
    VORAComicViewManager *strip = a.strip();
    if (reader->pageCount() != longChapterPages)
        return fail("the long chapter does not have 200 pages");
    // The page file and the size it is drawn at, for the peer.
    if (!waitUntil([&] { return a.pageOnScreen(0, true); }, 5000))
        return fail("page 1 never became opaque");
    VORAPictureImageView *first = strip->pageViewAt(0);
    const QByteArray pageBytes = first->photoBytes();
    QTemporaryDir files;
    const QString pageFile = writeFile(files, QStringLiteral("page1.img"), pageBytes);
    QQuickItem *container = findItem(a.item(QStringLiteral("readerPage0")), QStringLiteral("readerImageContainer"));
    const qreal imageW = container->width(), imageH = container->height();
    const QSize stored = first->photoSize();
    const int tileCount = int(first->tiles().size());

    // --- 2. Slider jumps to pages far away (neither prefetched nor cached) ---
    QList<double> jumpTimes, jumpOpaque;
    QList<int> jumpTargets;
    for (int i = 0; i < jumps; ++i) {
        // 60, 120, 180, 30, 90, 150, 195, 45, 105, 165, …: never within reach of the last one.
        static const int order[] = {60, 120, 180, 30, 90, 150, 195, 45, 105, 165, 75, 135};
        const int target = order[i % 12] + i / 12;
        if (target >= longChapterPages)
            break;
        idle(300);
        const FrameTiming t = timeToFrame(
            a.window(), [&] { reader->quickTurnPage(target); }, [&] { return a.pageOnScreen(target); }, 30000);
        if (t.readyMs < 0)
            return fail("a jumped-to page did not show");
        jumpTimes.append(t.readyMs);
        jumpTargets.append(target + 1);
        QElapsedTimer sinceReady;
        sinceReady.start();
        waitUntil([&] { return a.pageOnScreen(target, true); }, 5000);
        jumpOpaque.append(t.readyMs + sinceReady.nsecsElapsed() / 1e6);
    }

    // --- 1, 4, 5. The whole chapter read by page turns ---
    reader->quickTurnPage(0);
    if (!waitUntil([&] { return a.pageOnScreen(0, true); }, 15000))
        return fail("back on page 1 failed");
    idle(500);
    QQuickItem *stripItem = a.item(QStringLiteral("readerStrip"));
    QList<double> turnTimes, turnFirstFrame;
    int notReadyOnFirstFrame = 0;
    double prefetchWaitMs = 0;
    QJsonObject rssAfter;
    const qint64 rssStart = procStatusKiB("VmRSS");
    StallWatch stall;
    double stallAtTurn = -1;
    stall.start();
    double longestSoFar = 0;
    QList<QPair<double, int>> worstTurns;
    for (int i = 0; i < turns; ++i) {
        const int next = i + 1;
        // Prefetched: the next page decoded and drawn off screen before the turn.
        QElapsedTimer wait;
        wait.start();
        if (!waitUntil([&] { return strip->pageViewAt(next) && strip->pageViewAt(next)->state() == VORAPictureImageView::Shown; },
                       30000))
            return fail("the next page was never prefetched");
        prefetchWaitMs += wait.nsecsElapsed() / 1e6;
        idle(20);
        // Where a swipe ends: the strip at rest on the next page, then its page move.
        const FrameTiming t = timeToFrame(
            a.window(),
            [&] {
                const qreal x = next * strip->viewWidth();
                stripItem->setProperty("contentX", x);
                strip->scrollViewDidEndDecelerating(x);
            },
            [&] { return a.pageOnScreen(next); }, 30000);
        if (t.readyMs < 0)
            return fail("a turned-to page did not show");
        turnTimes.append(t.readyMs);
        turnFirstFrame.append(t.firstFrameMs);
        if (!t.readyOnFirstFrame)
            ++notReadyOnFirstFrame;
        if (stall.longestMs() > longestSoFar) {
            longestSoFar = stall.longestMs();
            stallAtTurn = next + 1;
        }
        // The gaps of this turn: from its wait for the prefetch to its frame.
        worstTurns.append({stall.takeWindowLongestMs(), next + 1});
        const int read = next + 1; // pages shown so far
        if (read == 20 || read == 100 || read == 200)
            rssAfter.insert(QString::number(read), procStatusKiB("VmRSS"));
    }
    stall.stop();
    const double readMs = stall.elapsedMs();
    // Further passes over the same chapter (pages from the disk cache): a
    // bounded reader ends each pass where the first ended.
    QJsonArray rssAfterPass{procStatusKiB("VmRSS")};
    for (int pass = 1; pass < passes; ++pass) {
        reader->quickTurnPage(0);
        if (!waitUntil([&] { return a.pageOnScreen(0); }, 15000))
            return fail("back on page 1 failed");
        for (int next = 1; next <= turns; ++next) {
            waitUntil([&] { return strip->pageViewAt(next) && strip->pageViewAt(next)->state() == VORAPictureImageView::Shown; }, 30000);
            idle(5);
            const qreal x = next * strip->viewWidth();
            stripItem->setProperty("contentX", x);
            strip->scrollViewDidEndDecelerating(x);
        }
        waitUntil([&] { return a.pageOnScreen(turns); }, 15000);
        idle(300);
        rssAfterPass.append(procStatusKiB("VmRSS"));
    }

    // --- Peer, in the same run ---
    Peer peer(imageW, imageH);
    idle(300);
    const QList<double> peerTimes = peer.time(pageFile, peerRuns);
    peer.view.hide();

    const QString stored_ = QStringLiteral("%1x%2").arg(stored.width()).arg(stored.height());
    const QString drawn = QStringLiteral("%1x%2").arg(imageW).arg(imageH);
    const QString machine = QGuiApplication::platformName();

    {
        QJsonObject line{{"bench", "reader_chapter_tap_to_first_page"},
                         {"runs", tapTimes.size()},
                         {"cold_ms", round2(tapTimes.first())},
                         {"warm_median_ms", round2(median(tapTimes.mid(1)))},
                         {"page", stored_},
                         {"drawn", drawn},
                         {"platform", machine}};
        const QJsonObject p = peerFields(peerTimes, tapTimes.first());
        for (auto it = p.constBegin(); it != p.constEnd(); ++it)
            line.insert(it.key(), it.value());
        line.insert("ratio_warm", round2(median(tapTimes.mid(1)) / median(peerTimes)));
        print(line);
    }
    {
        QJsonObject line{{"bench", "reader_page_turn_prefetched"},
                         {"turns", turnTimes.size()},
                         {"median_ms", round2(median(turnTimes))},
                         {"p95_ms", round2(percentile(turnTimes, 0.95))},
                         {"max_ms", round2(percentile(turnTimes, 1.0))},
                         {"not_ready_on_first_frame", notReadyOnFirstFrame},
                         {"frame_budget_ms", 16.7},
                         {"tiles_per_page", tileCount}};
        const QJsonObject p = peerFields(peerTimes, median(turnTimes));
        for (auto it = p.constBegin(); it != p.constEnd(); ++it)
            line.insert(it.key(), it.value());
        print(line);
    }
    {
        QJsonArray targets;
        for (int t : jumpTargets)
            targets.append(t);
        QJsonObject line{{"bench", "reader_page_jump_not_loaded"},
                         {"jumps", jumpTimes.size()},
                         {"to_pages", targets},
                         {"median_ms", round2(median(jumpTimes))},
                         {"p95_ms", round2(percentile(jumpTimes, 0.95))},
                         {"opaque_median_ms", round2(median(jumpOpaque))}};
        const QJsonObject p = peerFields(peerTimes, median(jumpTimes));
        for (auto it = p.constBegin(); it != p.constEnd(); ++it)
            line.insert(it.key(), it.value());
        print(line);
    }
    print(QJsonObject{{"bench", "reader_memory_200_pages"},
                      {"pages_read", turns + 1},
                      {"vmhwm_kib", procStatusKiB("VmHWM")},
                      {"rss_start_kib", rssStart},
                      {"rss_after_pages_kib", rssAfter},
                      {"rss_after_pass_kib", rssAfterPass},
                      {"rss_end_kib", procStatusKiB("VmRSS")},
                      {"page_image_cache_entries", VORAPageImageCache::shared().count()},
                      {"page_image_cache_kib", VORAPageImageCache::shared().byteCount() / 1024},
                      {"note", "whole process: app, reference site and peer window"}});
    print(QJsonObject{{"bench", "reader_main_thread_stall"},
                      {"pages_read", turns + 1},
                      {"read_ms", round2(readMs)},
                      {"longest_gap_ms", round2(stall.longestMs())},
                      {"at_page", stallAtTurn},
                      {"ticks", stall.ticks()},
                      {"worst_turns", [&] {
                           std::sort(worstTurns.begin(), worstTurns.end(), std::greater<>());
                           QJsonArray out;
                           for (const auto &w : worstTurns.mid(0, 5))
                               out.append(QJsonArray{w.second, round2(w.first)});
                           return out;
                       }()},
                      {"gaps_over_16ms", int(std::count_if(worstTurns.cbegin(), worstTurns.cend(),
                                                           [](const auto &w) { return w.first > 16.7; }))},
                      {"prefetch_wait_mean_ms", round2(prefetchWaitMs / std::max(1, turns))},
                      {"peer", "1 ms timer, the ideal gap"},
                      {"peer_ms", 1.0},
                      {"ratio", round2(stall.longestMs())}});
    if (!tucao)
        return 0;

    // --- 6. Page 1 with its tucao playing, next to the same page without ---
    reader->quickTurnPage(0);
    if (!waitUntil([&] { return a.pageOnScreen(0, true); }, 15000))
        return fail("back on page 1 failed");
    VORAPictureImageView *page1 = strip->pageViewAt(0);
    waitUntil([&] { return page1->hasTucao(); }, 15000);
    const int tucaoCount = int(page1->tucaoList().size());
    // Frames are asked for back to back, so an idle page renders as often as a
    // playing one: the interval is what one frame costs.
    int maxVisible = 0;
    auto playback = [&](bool show, int seconds, double *longestGap) {
        maxVisible = 0;
        strip->showTucao(show);
        strip->playTucao(show);
        idle(200);
        QList<double> intervals;
        QElapsedTimer clock;
        qint64 last = -1;
        QQuickWindow *w = a.window();
        const auto c = QObject::connect(w, &QQuickWindow::frameSwapped, w, [&] {
            const qint64 now = clock.nsecsElapsed();
            if (last >= 0)
                intervals.append((now - last) / 1e6);
            last = now;
            w->update();
        });
        StallWatch watch;
        QTimer sampler;
        QObject::connect(&sampler, &QTimer::timeout, w, [&] {
            int visible = 0;
            for (QQuickItem *it : findItems(a.item(QStringLiteral("readerPage0")), QStringLiteral("tucaoView")))
                visible += it->isVisible() && it->opacity() > 0 ? 1 : 0;
            maxVisible = std::max(maxVisible, visible);
        });
        clock.start();
        watch.start();
        sampler.start(250);
        w->update();
        idle(seconds * 1000);
        sampler.stop();
        watch.stop();
        QObject::disconnect(c);
        *longestGap = watch.longestMs();
        return intervals;
    };
    double gapOff = 0, gapOn = 0;
    const QList<double> off = playback(false, std::max(3, tucaoSeconds / 3), &gapOff);
    const QList<double> on = playback(true, tucaoSeconds, &gapOn);
    const int visibleOn = maxVisible;
    const bool playing = page1->tucaoPlaying();
    strip->showTucao(false);
    const double onMedian = median(on), offMedian = median(off);
    print(QJsonObject{{"bench", "reader_tucao_playback"},
                      {"comic", comicId},
                      {"page", 1},
                      {"tucao", tucaoCount},
                      {"tucao_total_of_page", reader->tucaoTotal()},
                      {"most_tucao_views_drawn_at_once", visibleOn},
                      {"playing", playing},
                      {"seconds", tucaoSeconds},
                      {"frames", on.size()},
                      {"frame_median_ms", round2(onMedian)},
                      {"frame_p95_ms", round2(percentile(on, 0.95))},
                      {"longest_gap_ms", round2(gapOn)},
                      {"peer", "the same page with tucao switched off, frames asked for back to back"},
                      {"peer_frame_median_ms", round2(offMedian)},
                      {"peer_frame_p95_ms", round2(percentile(off, 0.95))},
                      {"peer_longest_gap_ms", round2(gapOff)},
                      {"ratio", offMedian > 0 ? round2(onMedian / offMedian) : -1}});
    return 0;
}
