// The tucao rules without a window: group sizes, the rectangle conversion and
// display frames, playback of a page's tucao with its 21 places, stepping
// through groups, the menu's switches kept in the user defaults, the input
// view, one's own tucao, and what every option of an editing act asks for.

#include "CatalogueTestSupport.h"
#include "TucaoTestSupport.h"
#include "core/VORAUserConfig.h"
#include "net/ASIHTTPRequest.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATuCaoInputView.h"
#include "tucao/VORATuCaoMenuView.h"
#include "tucao/VORATucaoGeometry.h"
#include "tucao/VORATucaoPlayback.h"
#include "tucao/VORATucaoPublisher.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>
#include <utility>

namespace {
// A page drawn at half its pixel size: the page view's width over an image
// twice as wide (748 in portrait, 1004 in landscape).
VORATucaoPagePlacement halfSizePage(qreal viewWidth, qreal offsetY = 0, qreal originY = 0)
{
    VORATucaoPagePlacement p;
    p.imageSize = QSizeF(viewWidth * 2, 3000);
    p.imageViewSize = QSizeF(viewWidth, 1500);
    p.contentOffset = QPointF(0, offsetY);
    p.scrollViewOrigin = QPointF(0, originY);
    return p;
}
} // namespace

class TestTucaoRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void groupSize();
    void conversion_data();
    void conversion();
    void displayFrameRoundTrip_data();
    void displayFrameRoundTrip();
    void playback_data();
    void playback();
    void groupStepping_data();
    void groupStepping();
    void groupSteppingDebounced();
    void pauseStopsThePendingStart();
    void ownTucaoLongPress_data();
    void ownTucaoLongPress();
    void menuSwitchPersisted();
    void inputView_data();
    void inputView();
    void newRectangle_data();
    void newRectangle();
    void editingOutcomes_data();
    void editingOutcomes();

private:
    CatalogueTestEnvironment m_env;
};

void TestTucaoRules::initTestCase()
{
    QVERIFY(m_env.start());
}

void TestTucaoRules::groupSize()
{
    // One tucao per 45,000 pixels: 33, 2, the boundary at 45,000, then 0.
    for (const auto &[image, group] : {std::pair{QSizeF(1000, 1500), 33}, {QSizeF(300, 400), 2}, {QSizeF(150, 300), 1},
                                       {QSizeF(150, 299), 0}, {QSizeF(10, 10), 0}, {QSizeF(), 0}}) {
        QCOMPARE(VORATucaoGeometry::tucaoNumPerPage(image), group);
    }
}

void TestTucaoRules::conversion_data()
{
    QTest::addColumn<qreal>("viewWidth");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<qreal>("originY");
    QTest::addColumn<QList<qint64>>("viewRect");
    QTest::addColumn<QList<qint64>>("stored");

    const QList<qint64> rect{40, 100, 60, 30};
    const QList<qint64> at800{80, 800, 120, 60};
    QTest::newRow("portrait, scrolled 300") << 748.0 << QPointF(0, 300) << 0.0 << rect << at800;
    QTest::newRow("portrait, sideways offset ignored") << 748.0 << QPointF(250, 300) << 0.0 << rect << at800;
    QTest::newRow("landscape, page centred 50 down") << 1004.0 << QPointF(0, 0) << 50.0 << rect
                                                     << QList<qint64>{80, 100, 120, 60};
    QTest::newRow("fractions truncated at each step") << 748.0 << QPointF(0, 300.9) << 0.5 << rect
                                                      << QList<qint64>{80, 798, 120, 60};
    QTest::newRow("odd points") << 1004.0 << QPointF(0, 0) << 0.0 << QList<qint64>{33, 7, 11, 5}
                                << QList<qint64>{66, 14, 22, 10};
}

void TestTucaoRules::conversion()
{
    QFETCH(qreal, viewWidth);
    QFETCH(QPointF, offset);
    QFETCH(qreal, originY);
    QFETCH(QList<qint64>, viewRect);
    QFETCH(QList<qint64>, stored);

    VORATucaoPagePlacement placement = halfSizePage(viewWidth, 0, originY);
    placement.contentOffset = offset;
    const VORATucaoDTO dto = makeDto(viewRect[0], viewRect[1], viewRect[2], viewRect[3], "好", "42");
    const VORATucaoDTO out = VORATucaoGeometry::getNewTucaoDTO(dto, placement);
    QCOMPARE(rectOf(out), stored);

    // A page without sizes leaves the record alone rather than dividing by 0.
    QCOMPARE(rectOf(VORATucaoGeometry::getNewTucaoDTO(dto, VORATucaoPagePlacement())), viewRect);
}

void TestTucaoRules::displayFrameRoundTrip_data()
{
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<qreal>("viewWidth");
    QTest::addColumn<qreal>("offsetY");
    QTest::addColumn<QList<qint64>>("stored");
    QTest::addColumn<QRectF>("frame");

    QTest::newRow("portrait, half size") << QSizeF(1496, 2000) << 748.0 << 0.0 << QList<qint64>{100, 200, 50, 40}
                                         << QRectF(50, 100, 25, 20);
    QTest::newRow("landscape, half size, scrolled") << QSizeF(2008, 3000) << 1004.0 << 300.0
                                                    << QList<qint64>{100, 900, 50, 40} << QRectF(50, 450, 25, 20);
    QTest::newRow("portrait, odd scale") << QSizeF(1000, 1500) << 748.0 << 120.0 << QList<qint64>{100, 333, 77, 41}
                                         << QRectF(74.8, 249.084, 57.596, 30.668);
    QTest::newRow("landscape, image narrower than the view") << QSizeF(800, 1200) << 1004.0 << 0.0
                                                             << QList<qint64>{799, 1199, 1, 1}
                                                             << QRectF(1002.745, 1504.745, 1.255, 1.255);
}

void TestTucaoRules::displayFrameRoundTrip()
{
    QFETCH(QSizeF, image);
    QFETCH(qreal, viewWidth);
    QFETCH(qreal, offsetY);
    QFETCH(QList<qint64>, stored);
    QFETCH(QRectF, frame);

    VORATucao tucao;
    tucao.x = qint32(stored[0]);
    tucao.y = qint32(stored[1]);
    tucao.width = qint32(stored[2]);
    tucao.height = qint32(stored[3]);
    const QRectF shown = VORATucaoGeometry::setTucaoDisplayFrameWithView(tucao, image, viewWidth);
    QVERIFY(std::abs(shown.x() - frame.x()) + std::abs(shown.y() - frame.y()) + std::abs(shown.width() - frame.width())
                + std::abs(shown.height() - frame.height())
            < 0.02);

    // On screen at the fitted zoom, scrolled by offsetY: the same frame moved
    // up, and back to pixels within what whole points can say.
    VORATucaoPagePlacement placement;
    placement.imageSize = image;
    placement.imageViewSize = QSizeF(viewWidth, VORATucaoGeometry::fittedHeight(image, viewWidth));
    placement.contentOffset = QPointF(0, offsetY);
    const QRectF onScreen = VORATucaoGeometry::viewRectForTucao(tucao, placement);
    QCOMPARE(onScreen.translated(0, offsetY), shown);
    const QList<qint64> back = rectOf(VORATucaoGeometry::getNewTucaoDTO(
        makeDto(qint64(onScreen.x()), qint64(onScreen.y()), qint64(onScreen.width()), qint64(onScreen.height())), placement));
    for (int i = 0; i < 4; ++i)
        QVERIFY(stored[i] - back[i] >= 0 && stored[i] - back[i] <= qint64(std::ceil(image.width() / viewWidth)) + 1);
}

// A page's playback driven step by step: "start", "show" (one more comes in;
// "showN": N more), "next" group, "pause", "play", "hide", "away" (another
// page is current now), "begin" (the page asks to play), "list:<n>" (a new
// list of n for the page), "remove:<id>"
// (taken off; "absent:<id>" finds nothing to take), "putBack:<id>" (moved and
// put back), "new:<id>" (just published); then the ids on screen in their
// places, the page's number of tucao and whether it is still playing.
void TestTucaoRules::playback_data()
{
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<int>("total");
    QTest::addColumn<bool>("playing");
    QStringList places;
    for (int i = 1; i <= 21; ++i)
        places << QString::number(i);
    QStringList wrapped = places; // the 22nd to 25th take places 1 to 4 (21 mod 20 ... 24 mod 20)
    for (int i = 22; i <= 25; ++i)
        wrapped[(i - 1) % 20] = QString::number(i);
    const QSizeF page(1000, 1500), groupsOf3(300, 450);
    QTest::newRow("21 places") << page << 25 << "start show21" << places << 25 << true;
    QTest::newRow("later ones take earlier places") << page << 25 << "start show25" << wrapped << 25 << true;
    QTest::newRow("all played: the timer stops") << page << 25 << "start show26" << wrapped << 25 << false;
    QTest::newRow("hidden") << page << 25 << "start show5 hide" << QStringList() << 25 << false;
    QTest::newRow("paused: they stay") << page << 3 << "start show pause" << QStringList{"1"} << 3 << false;
    QTest::newRow("played again") << page << 3 << "start show pause play" << QStringList{"1"} << 3 << true;
    QTest::newRow("not the current page: no playing") << page << 3 << "start show pause away begin play"
                                                      << QStringList{"1"} << 3 << false;
    QTest::newRow("a new list stops and empties") << page << 3 << "start show list:5" << QStringList() << 5 << false;
    QTest::newRow("a group, then playback shows each once")
        << groupsOf3 << 6 << "start show next pause play show5" << QStringList{"4", "5", "6", "2", "3"} << 6 << true;
    QTest::newRow("a shown one taken off") << page << 6 << "start show3 remove:2 absent:2 absent:"
                                           << QStringList{"1", "3"} << 5 << true;
    QTest::newRow("playing on after the last shown") << page << 6 << "start show3 remove:2 show"
                                                     << QStringList{"1", "3", "4"} << 5 << true;
    QTest::newRow("taken off while in a group") << groupsOf3 << 6 << "start show next pause play show5 remove:5"
                                                << QStringList{"4", "6", "2", "3"} << 5 << true;
    QTest::newRow("put back at once, and not again")
        << page << 6 << "start show3 remove:2 show putBack:5 show2" << QStringList{"1", "3", "4", "5", "6"} << 5 << false;
    QTest::newRow("published before playback") << page << 2 << "new:99" << QStringList{"99"} << 3 << false;
}

void TestTucaoRules::playback()
{
    QFETCH(QSizeF, image);
    QFETCH(int, count);
    QFETCH(QString, script);
    QFETCH(QStringList, shown);
    QFETCH(int, total);
    QFETCH(bool, playing);
    VORATucaoPlayback playback;
    QAbstractItemModelTester tester(&playback, QAbstractItemModelTester::FailureReportingMode::QtTest);
    playback.setImageSize(image);
    playback.setTucaoList(makeTucaoList(count));
    for (const QString &step : script.split(QLatin1Char(' '))) {
        const QString id = step.section(QLatin1Char(':'), 1);
        if (step == QLatin1String("start")) {
            playback.startTucaoPlayback();
        } else if (step.startsWith(QLatin1String("show"))) {
            for (int i = 0; i < std::max(1, step.mid(4).toInt()); ++i)
                playback.showTucaoOneByOne();
        } else if (step == QLatin1String("next")) {
            playback.nextPageTucao();
        } else if (step == QLatin1String("pause") || step == QLatin1String("play")) {
            playback.playTucao(step == QLatin1String("play"));
        } else if (step == QLatin1String("hide")) {
            playback.hideTucaoView();
        } else if (step == QLatin1String("away")) {
            playback.setCurrentImagePageIndex(playback.pageIndex() + 1);
        } else if (step == QLatin1String("begin")) {
            playback.beginShowTucao();
        } else if (step.startsWith(QLatin1String("list:"))) {
            playback.setTucaoList(makeTucaoList(id.toInt()));
        } else if (step.startsWith(QLatin1String("remove:")) || step.startsWith(QLatin1String("absent:"))) {
            QCOMPARE(playback.removeTucao(id), step.startsWith(QLatin1String("remove:")));
        } else if (step.startsWith(QLatin1String("putBack:"))) {
            VORATucao moved = *playback.tucaoWithId(id);
            moved.x = 500;
            playback.addTucao(moved);
            QCOMPARE(playback.tucaoWithId(id)->x, 500);
        } else {
            VORATucao fresh;
            fresh.tucaoId = id;
            playback.addTucao(fresh);
        }
    }
    QCOMPARE(idsOf(playback.currentDisplayTucaoViewList()), shown);
    QCOMPARE(playback.tucaoCount(), total);
    QCOMPARE(playback.isPlaying(), playing);
    for (int row = 0; row < playback.count(); ++row) // every row keeps its tucao
        QVERIFY(!playback.tucaoAt(row).value("tucaoId").toString().isEmpty());
}

// Steps through the groups (the first row while playing): "n" next, "p"
// previous, then the ids shown ("-": none), the group index and the
// indicator posted, if any.
void TestTucaoRules::groupStepping_data()
{
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("playing");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("groups of 3") << QSizeF(300, 450) << 10 << true
                                 << QStringList{"n 4,5,6 2",  "n 7,8,9 3",  "n 10 4",           "n 10 4 last", "p 10 3",
                                                "p 7,8,9 2",  "p 4,5,6 1",  "p 1,2,3 -1",       "p 1,2,3 -1 first",
                                                "n 1,2,3 1"};
    QTest::newRow("too small for a group: all at once") << QSizeF(100, 100) << 4 << false
                                                        << QStringList{"n 1,2,3,4 1", "n 1,2,3,4 1 last", "p 1,2,3,4 -1"};
    QTest::newRow("no tucao: one empty group") << QSizeF(1000, 1500) << 0 << false << QStringList{"n - 1", "n - 1 last"};
}

void TestTucaoRules::groupStepping()
{
    QFETCH(QSizeF, image);
    QFETCH(int, count);
    QFETCH(bool, playing);
    QFETCH(QStringList, steps);
    NotificationRecorder panels(textPanelName());
    VORATucaoPlayback playback;
    QAbstractItemModelTester tester(&playback, QAbstractItemModelTester::FailureReportingMode::QtTest);
    playback.setImageSize(image);
    playback.setTucaoList(makeTucaoList(count));
    if (playing) {
        playback.startTucaoPlayback();
        playback.showTucaoOneByOne();
        playback.showTucaoOneByOne();
    }
    for (const QString &step : std::as_const(steps)) {
        const QStringList part = step.split(QLatin1Char(' '));
        const qsizetype before = panels.userInfos.size();
        if (part[0] == QLatin1String("n"))
            playback.nextPageTucao();
        else
            playback.lastPageTucao();
        const QStringList shown = part[1] == QLatin1String("-") ? QStringList() : part[1].split(QLatin1Char(','));
        QVERIFY2(idsOf(playback.currentDisplayTucaoViewList()) == shown, qPrintable(step));
        QVERIFY2(playback.currentTucaoPageIndex() == part[2].toInt(), qPrintable(step));
        QStringList posted;
        if (part.size() > 3)
            posted << (part[3] == QLatin1String("last") ? VORATucaoPlayback::lastGroupText : VORATucaoPlayback::firstGroupText);
        QCOMPARE(panels.texts().mid(before), posted);
    }
    if (!panels.userInfos.isEmpty())
        QCOMPARE(panels.userInfos.last().value("delay").toDouble(), 1.0);
}

void TestTucaoRules::groupSteppingDebounced()
{
    VORATucaoPlayback playback;
    playback.setTimerIntervals(VORATucaoPlayback::setTucaoDelayMs, VORATucaoPlayback::showTucaoIntervalMs, 20);
    playback.setImageSize(QSizeF(300, 450));
    playback.setTucaoList(makeTucaoList(10));
    playback.startTucaoPlayback();
    QVERIFY(playback.isPlaying());

    // Three quick presses: the playback stops at once, only the last press counts.
    playback.showNextPageTucao();
    QVERIFY(!playback.isPlaying());
    playback.showNextPageTucao();
    playback.showLastPageTucao();
    QVERIFY(playback.isGroupStepPending());
    QTRY_VERIFY(!playback.isGroupStepPending());
    QCOMPARE(idsOf(playback.currentDisplayTucaoViewList()), QStringList({"1", "2", "3"}));
    QCOMPARE(playback.currentTucaoPageIndex(), -1);

    // Hiding drops a pending step.
    playback.showNextPageTucao();
    playback.hideTucaoView();
    QVERIFY(!playback.isGroupStepPending());
    QCOMPARE(playback.count(), 0);
}

// Hiding, pausing and either group button drop the start still waiting.
void TestTucaoRules::pauseStopsThePendingStart()
{
    const std::function<void(VORATucaoPlayback &)> presses[] = {
        &VORATucaoPlayback::hideTucaoView, [](VORATucaoPlayback &p) { p.playTucao(false); },
        &VORATucaoPlayback::showNextPageTucao, &VORATucaoPlayback::showLastPageTucao};
    for (const auto &press : presses) {
        VORATucaoPlayback playback;
        playback.setImageSize(QSizeF(300, 450));
        playback.setTucaoList(makeTucaoList(6));
        playback.setTucao();
        QVERIFY(playback.isStartPending());
        press(playback);
        QVERIFY(!playback.isStartPending());
        QVERIFY(!playback.isPlaying());
    }
}

void TestTucaoRules::ownTucaoLongPress_data()
{
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<QString>("author");
    QTest::addColumn<bool>("opens");
    QTest::newRow("own") << true << "100001" << true;
    QTest::newRow("someone else's") << true << "90001" << false;
    QTest::newRow("own, signed out since") << false << "100001" << false;
    QTest::newRow("no author") << true << "" << false;
}

void TestTucaoRules::ownTucaoLongPress()
{
    QFETCH(bool, signedIn);
    QFETCH(QString, author);
    QFETCH(bool, opens);

    signInLocally(QStringLiteral("100001"));
    if (!signedIn)
        signOutLocally();
    NotificationRecorder edits(VORATucaoPlayback::popUpTucaoEditView);
    VORATucaoPlayback playback;
    playback.setTucaoList(makeTucaoList(2, author));
    playback.nextPageTucao();
    QCOMPARE(playback.index(0).data(VORATucaoPlayback::IsOwnRole).toBool(), opens);

    QObject view;
    QCOMPARE(playback.longPressTucao(1, &view), opens);
    QCOMPARE(edits.userInfos.size(), opens ? 1 : 0);
    if (opens)
        QCOMPARE(edits.userInfos.first().value("tucao").toMap().value("tucaoId").toString(), QStringLiteral("2"));
    QVERIFY(!playback.longPressTucao(2, &view)); // no such row
    signOutLocally();
}

// Hidden tucao cannot be played; showing them plays them and is kept in the
// user defaults (read back as a restart would, so the next chapter's menu
// starts shown); pausing is not kept.
void TestTucaoRules::menuSwitchPersisted()
{
    VORAUserConfig::shareUserConfigInstance()->setIsDisplayTuCao(false);
    auto menu = std::make_unique<VORATuCaoMenuView>();
    QSignalSpy play(menu.get(), &VORATuCaoMenuView::playTucao);
    QSignalSpy show(menu.get(), &VORATuCaoMenuView::showTucao);
    menu->playTucaoBtn();
    QVERIFY(play.isEmpty() && !menu->playTucaoflag());
    menu->showTucaoBtn();
    QCOMPARE(show.takeFirst().first().toBool(), true);
    QCOMPARE(play.takeFirst().first().toBool(), true);
    QVERIFY(VORAUserConfig().isDisplayTuCao());

    menu = std::make_unique<VORATuCaoMenuView>();
    QVERIFY(menu->showTucaoflag() && menu->playTucaoflag());
    menu->playTucaoBtn();
    QVERIFY(!menu->playTucaoflag());
    QVERIFY(VORAUserConfig().isDisplayTuCao());
    menu->showTucaoBtn();
    QVERIFY(!menu->showTucaoflag() && !menu->playTucaoflag());
    QVERIFY(!VORAUserConfig().isDisplayTuCao());
}

void TestTucaoRules::inputView_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("empty") << "" << false;
    QTest::newRow("blanks") << "   " << false;
    QTest::newRow("text") << "好看！" << true;
    QTest::newRow("long text, no limit") << QString(300, QChar(0x597D)) << true;
}

void TestTucaoRules::inputView()
{
    QFETCH(QString, text);
    QFETCH(bool, accepted);

    // Nobody signed in: the sign-in view instead, with the jump type saved.
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    signOutLocally();
    global->user()->setUserViewJumpType(0);
    global->user()->setUserViewJumpIsTopupType(0);
    VORATuCaoInputView input;
    QSignalSpy signIn(&input, &VORATuCaoInputView::signInRequested);
    QVERIFY(!input.popUpTucaoInputView());
    QCOMPARE(signIn.count(), 1);
    QVERIFY(!input.isOpen());
    QCOMPARE(global->loadUser()->userViewJumpType(), 1);
    QCOMPARE(global->loadUser()->userViewJumpIsTopupType(), 2); // back to the page, no top-up

    signInLocally(QStringLiteral("100001"));
    QVERIFY(input.popUpTucaoInputView());
    QVERIFY(input.inputBoxVisible());
    input.textFieldDidBeginEditing();
    input.setText(text);

    NotificationRecorder panels(textPanelName());
    QSignalSpy place(&input, &VORATuCaoInputView::placeTucao);
    input.configTucaoInput();
    QCOMPARE(input.isLocation(), accepted);
    QCOMPARE(input.inputBoxVisible(), !accepted);
    QCOMPARE(panels.texts(), accepted ? QStringList() : QStringList{VORATuCaoInputView::emptyText});
    // An accepted text is placed by the next tap, once, and the view closes;
    // a refused one is not placed and the view stays until cancelled.
    QCOMPARE(input.touchEndedAtPoint(QPointF(300, 420)), accepted);
    QCOMPARE(input.isOpen(), !accepted);
    QVERIFY(!input.touchEndedAtPoint(QPointF(1, 1)));
    QCOMPARE(place.count(), accepted ? 1 : 0);
    if (accepted)
        QCOMPARE(place.first(), (QVariantList{text, QPointF(300, 420)}));
    input.cancelTucaoInput();
    QVERIFY(!input.isOpen());
    signOutLocally();
}

void TestTucaoRules::newRectangle_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPointF>("tap");
    QTest::addColumn<int>("screenState");
    QTest::newRow("short, middle, landscape") << "好" << QPointF(500, 400) << 1;
    QTest::newRow("sentence, top-left corner") << "这一页画得太好了，哈哈哈哈哈哈" << QPointF(2, 2) << 1;
    QTest::newRow("long text, bottom-right, portrait") << QString(2000, QChar(0x597D)) << QPointF(760, 1020) << 0;
}

void TestTucaoRules::newRectangle()
{
    QFETCH(QString, text);
    QFETCH(QPointF, tap);
    QFETCH(int, screenState);

    const qreal width = screenState == 1 ? 1004 : 748;
    const VORATucaoPagePlacement placement = halfSizePage(width, 0, 0);
    VORATuCaoEditManager edit(text, tap, placement, screenState);

    const QRectF rect = edit.editRect();
    const QRectF bounds = edit.boundsRect();
    QCOMPARE(bounds, QRectF(0, 0, width, screenState == 1 ? 768 : 1024));
    QVERIFY(bounds.contains(rect));
    QVERIFY(rect.width() <= VORATuCaoEditManager::maxLabelWidth + 2 * VORATuCaoEditManager::labelMargin);
    QFont font;
    font.setPointSizeF(11);
    QVERIFY(rect.height() <= std::ceil(QFontMetricsF(font).lineSpacing() * 20) + 2 * VORATuCaoEditManager::labelMargin);
    QVERIFY(rect.width() >= VORATuCaoEditManager::minWidth && rect.height() >= VORATuCaoEditManager::minHeight);
    // Centred on the tap unless an edge is in the way.
    if (bounds.adjusted(rect.width() / 2, rect.height() / 2, -rect.width() / 2, -rect.height() / 2).contains(tap))
        QCOMPARE(rect.center(), tap);
    // A longer text never gets a smaller label.
    QVERIFY(VORATuCaoEditManager::sizeForText(text + text).height() >= VORATuCaoEditManager::sizeForText(text).height());

    // Moves and resizes stay on the page and keep a usable size.
    edit.moveBy(-5000, -5000);
    QCOMPARE(edit.editRect().topLeft(), bounds.topLeft());
    edit.resizeBy(5000, 5000);
    QVERIFY(bounds.contains(edit.editRect()));
    QCOMPARE(edit.editRect().bottomRight(), bounds.bottomRight());
    edit.resizeBy(-5000, -5000);
    QCOMPARE(edit.editRect().size(), QSizeF(VORATuCaoEditManager::minWidth, VORATuCaoEditManager::minHeight));
    edit.moveBy(5000, 5000);
    QCOMPARE(edit.editRect().bottomRight(), bounds.bottomRight());
}

// What each option of an editing act asks for (the tucao site suite owns
// what goes over the wire).
void TestTucaoRules::editingOutcomes_data()
{
    QTest::addColumn<bool>("isPublished");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("asks"); // "publish", "edit", "delete", "putBack" or "" (just closes)
    QTest::newRow("new: confirm publishes") << false << "confirm" << "publish";
    QTest::newRow("new: cancel closes") << false << "cancel" << "";
    QTest::newRow("new: delete closes, sends nothing") << false << "delete" << "";
    QTest::newRow("own: confirm edits") << true << "confirm" << "edit";
    QTest::newRow("own: cancel puts it back") << true << "cancel" << "putBack";
    QTest::newRow("own: delete deletes") << true << "delete" << "delete";
}

void TestTucaoRules::editingOutcomes()
{
    QFETCH(bool, isPublished);
    QFETCH(QString, option);
    QFETCH(QString, asks);

    const VORATucaoPagePlacement placement = halfSizePage(1004, 300, 0);
    VORATucao own = makeTucaoList(1, QStringLiteral("100001")).first();
    own.tucaoId = QStringLiteral("123");
    own.x = 200;
    own.y = 900;
    own.width = 120;
    own.height = 60;
    std::unique_ptr<VORATuCaoEditManager> edit =
        isPublished ? std::make_unique<VORATuCaoEditManager>(own, placement, 1)
                    : std::make_unique<VORATuCaoEditManager>(QStringLiteral("新吐槽"), QPointF(400, 300), placement, 1);
    if (isPublished) // where the page shows it: half size, 300 scrolled
        QCOMPARE(edit->editRect(), QRectF(100, 150, 60, 30));
    QStringList asked;
    connect(edit.get(), &VORATuCaoEditManager::publishTucaoRequested, this, [&] { asked << "publish"; });
    connect(edit.get(), &VORATuCaoEditManager::confirmEditRequested, this, [&] { asked << "edit"; });
    connect(edit.get(), &VORATuCaoEditManager::deleteTucaoRequested, this, [&] { asked << "delete"; });
    QSignalSpy putBack(edit.get(), &VORATuCaoEditManager::tucaoPutBack);
    QSignalSpy removed(edit.get(), &VORATuCaoEditManager::removed);

    edit->moveBy(10, -20);
    if (option == QLatin1String("confirm"))
        edit->confirmPubTuCao();
    else if (option == QLatin1String("cancel"))
        edit->cancleEditTuCao();
    else
        edit->deleteTuCaoView();
    const bool sends = asks != QLatin1String("putBack") && !asks.isEmpty();
    QCOMPARE(asked, sends ? QStringList{asks} : QStringList());
    QCOMPARE(putBack.count(), sends || asks.isEmpty() ? 0 : 1);
    // Moved 10 right and 20 up on a half-size page, in page pixels.
    if (!putBack.isEmpty()) {
        const VORATucao back = putBack.first().first().value<VORATucao>();
        QCOMPARE(back.tucaoId, own.tucaoId);
        QCOMPARE(rectOf(back), QList<qint64>({220, 860, 120, 60}));
    }

    // A request waits for its answer with the menu open; then the act closes,
    // and once closing, the options ask for nothing more.
    QCOMPARE(edit->menuExpanded(), sends);
    edit->hideEditTuCaoView();
    QVERIFY(!edit->menuExpanded());
    QTRY_VERIFY(edit->isRemoved());
    QCOMPARE(removed.count(), 1);
    edit->confirmPubTuCao();
    edit->deleteTuCaoView();
    QCOMPARE(asked.size(), sends ? 1 : 0);
}

QTEST_MAIN(TestTucaoRules)
#include "tst_tucaorules.moc"
