// The user panel's wiring in the real app shell, offscreen, against the
// in-process reference site: each way the app sends a signed-out reader to sign
// in opens the panel on its sign-in form, a demo account typed into the real
// fields signs in, and the reader is back where he was with what he asked for
// done (the comic on the shelf, the paid chapter read, the tucao writable). The
// sign-in rules and the site's round trips are tests/account's.

#include "ReaderTestWindow.h"
#include "SiteCatalogue.h"
#include "account/VORAPayViewController.h"
#include "account/VORAUserViewController.h"
#include "catalogue/VORAComicHomePageView.h"
#include "reader/VORAReadComicManager.h"
#include "store/VORADatabaseManager.h"
#include "tucao/VORATuCaoInputView.h"

#include <optional>
#include <utility>

namespace {
bool onShelf(const QString &comicId)
{
    VORADatabaseManager db;
    for (const BookshelfPtr &record : db.getAllBookshelf()) {
        if (record && record->comicId() == comicId)
            return true;
    }
    return false;
}

// A chapter sealed for paying members of the demo catalogue (a function of
// the seed, its times relative to the site's first start, which is now): one
// released between one and six days ago.
std::optional<std::pair<QString, QString>> sealedChapter()
{
    const SiteCatalogue catalogue(QuorinSiteOptions().seed, 0);
    for (const SiteCatalogue::Comic &comic : catalogue.comics()) {
        for (const SiteCatalogue::Chapter &c : comic.chapters) {
            const qint64 t = c.effectivePassTime();
            if (comic.isVip == 3 && t <= -SiteCatalogue::kDay && t >= -6 * SiteCatalogue::kDay)
                return std::make_pair(QString::number(comic.id), QString::number(c.id));
        }
    }
    return std::nullopt;
}
} // namespace

class TestUserPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void shelfButtonSignsInThenAdds();
    void readGateSignsInThenReads();
    void tucaoWriteSignsInThenWrites();
    void topUpButtonSignsInThenPays();

private:
    // Types into the panel's sign-in fields and submits (Enter, or the button).
    static void signIn(const ReaderTestWindow &app, const QString &name, const QString &password, bool byEnter);

    TestHome m_home;
    std::unique_ptr<QuorinSite> m_site;
};

void TestUserPanel::initTestCase()
{
    m_site = startSite(m_home);
    QVERIFY(m_site);
}

void TestUserPanel::cleanup()
{
    QVERIFY(signInAs(QString(), QString()));
}

void TestUserPanel::signIn(const ReaderTestWindow &app, const QString &name, const QString &password, bool byEnter)
{
    QQuickItem *panel = app.item(QStringLiteral("userPanel"));
    QVERIFY(panel);
    QTRY_COMPARE(panel->x(), app.window()->width() - panel->width()); // slid in
    QVERIFY(app.click(QStringLiteral("signInUserNameInput")));
    QTRY_VERIFY(app.item(QStringLiteral("signInUserNameInput"))->hasActiveFocus());
    QTest::keyClick(app.window(), Qt::Key_A, Qt::ControlModifier);
    app.type(name);
    QTest::keyClick(app.window(), Qt::Key_Tab);
    QVERIFY(app.item(QStringLiteral("signInPasswordInput"))->hasActiveFocus());
    app.type(password);
    if (byEnter)
        QTest::keyClick(app.window(), Qt::Key_Return);
    else
        QVERIFY(app.click(QStringLiteral("signInButton")));
}

void TestUserPanel::shelfButtonSignsInThenAdds()
{
    ReaderTestWindow app(QSize(800, 600));
    QVERIFY(app.started());
    const QString comicId = QStringLiteral("10005");
    QVERIFY(!onShelf(comicId));
    app.root()->openComicDetail(comicId, QString(), QString());
    VORAComicHomePageView *home = app.root()->comicHomePageView();
    QTRY_VERIFY_WITH_TIMEOUT(home->state() == VORAComicHomePageView::Shown, 10000);

    QVERIFY(app.click(QStringLiteral("bookshelfButton")));
    QTRY_VERIFY(app.item(QStringLiteral("signInForm")));
    QQuickItem *panel = app.item(QStringLiteral("userPanel"));
    QTRY_COMPARE(panel->x(), app.window()->width() - panel->width());
    // The small window holds the form's actions.
    for (const char *name : {"signInButton", "toPassport", "closeUserPanel"}) {
        const QRectF r = app.item(QLatin1String(name))->mapRectToScene(QRectF(0, 0, 1, 1));
        QVERIFY2(QRectF(0, 0, 800, 600).contains(r), name);
    }

    // The site's refusal shows in the panel, which stays.
    signIn(app, QStringLiteral("reader"), QStringLiteral("wrong-password"), true);
    QTRY_VERIFY_WITH_TIMEOUT(app.item(QStringLiteral("formMessage"))
                                 && app.item(QStringLiteral("formMessage"))->property("text").toString()
                                        == QStringLiteral("用户名或密码错误"),
                             10000);
    QVERIFY(app.root()->userViewOpen());
    app.shot("sign-in-error.png");

    signIn(app, QStringLiteral("reader"), QStringLiteral("reader123"), false);
    QTRY_VERIFY_WITH_TIMEOUT(!app.root()->userViewOpen() && !app.item(QStringLiteral("userPanel")), 10000);
    QVERIFY(home->inBookshelf());
    QVERIFY(onShelf(comicId));
    QQuickItem *shelfButton = app.item(QStringLiteral("bookshelfButton"));
    QVERIFY(shelfButton);
    QVERIFY(shelfButton->property("source").toString().endsWith(QStringLiteral("/alreadyaddbookshelf.png")));
}

void TestUserPanel::readGateSignsInThenReads()
{
    ReaderTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    const auto chapter = sealedChapter();
    QVERIFY(chapter);
    const auto [comicId, chapterId] = *chapter;
    app.root()->openReader(comicId, chapterId, VORAReadComicManager::kFirstPage);
    QTRY_VERIFY_WITH_TIMEOUT(app.root()->userViewOpen(), 10000);
    QTRY_VERIFY(app.item(QStringLiteral("signInForm")));
    QVERIFY(!app.pageShown(0));

    // A paying member signed in, the reader goes on with the chapter.
    signIn(app, QStringLiteral("vip"), QStringLiteral("vip123"), true);
    QTRY_VERIFY_WITH_TIMEOUT(!app.root()->userViewOpen() && !app.item(QStringLiteral("userPanel")), 10000);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    QCOMPARE(app.reader()->chapterId(), chapterId);
    QTRY_VERIFY(app.item(QStringLiteral("readerView"))->hasActiveFocus());
}

void TestUserPanel::tucaoWriteSignsInThenWrites()
{
    ReaderTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    app.root()->openReader(QStringLiteral("10001"), QString(), VORAReadComicManager::kFirstPage);
    QTRY_VERIFY_WITH_TIMEOUT(app.pageShown(0), 15000);
    const auto writeClicked = [&] { return app.showBars() && app.click(QStringLiteral("tucaoWriteButton")); };

    QVERIFY(writeClicked());
    QTRY_VERIFY(app.root()->userViewOpen());
    QVERIFY(!app.reader()->tucaoInputView()->isOpen());
    signIn(app, QStringLiteral("reader"), QStringLiteral("reader123"), true);
    QTRY_VERIFY_WITH_TIMEOUT(!app.root()->userViewOpen() && !app.item(QStringLiteral("userPanel")), 10000);

    QVERIFY(writeClicked());
    QTRY_VERIFY(app.item(QStringLiteral("TucaotextFiled")));
}

void TestUserPanel::topUpButtonSignsInThenPays()
{
    // Signed out, the coin top-up button signs in first, then the panel gives
    // way to the coin payment screen.
    ReaderTestWindow app(QSize(1366, 768));
    QVERIFY(app.started());
    app.root()->switchView(112);
    QTRY_VERIFY(app.item(QStringLiteral("signInForm")));
    QVERIFY(!app.root()->payOpen());
    signIn(app, QStringLiteral("reader"), QStringLiteral("reader123"), true);
    QTRY_VERIFY_WITH_TIMEOUT(app.root()->payOpen() && !app.root()->userViewOpen(), 10000);
    QCOMPARE(int(app.root()->payView()->kind()), int(VORAPayViewController::Coins));
}

QTEST_MAIN(TestUserPanel)
#include "tst_userpanel.moc"
