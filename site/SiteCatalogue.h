#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The demo catalogue: comics, chapters and pages, slides and hot keywords, a pure
// function of the seed and of the anchor time (release times are relative to
// it). Immutable once built, so any thread may read it.
class SiteCatalogue
{
public:
    struct Page
    {
        qint64 id = 0;
        int index = 0;
        int width = 0;
        int height = 0;
        QByteArray format; // "jpg", "png" or "webp"
    };
    struct Chapter
    {
        qint64 id = 0;
        qint64 comicId = 0;
        int index = 0;
        QString name;
        int type = 1;          // 2 = paid chapter
        int price = 0;         // coins
        qint64 releaseTime = 0;
        qint64 passTime = 0;
        bool passTimeNull = false;
        int sizeKb = 0;
        QList<Page> pages;
        qint64 effectivePassTime() const { return qMax(releaseTime, passTimeNull ? 0 : passTime); }
    };
    struct Comic
    {
        qint64 id = 0;
        int ordinal = 0;
        QString name;
        QString author;
        QString description;
        QString firstLetter;
        QString themeIds;     // comma separated theme codes
        QString groupIds;     // comma separated category codes
        int seriesStatus = 0; // 0 ongoing, 1 finished, 2 paused
        int readOrder = 0;
        int accredit = 0;     // 0 none, 1 exclusive, 2 signed
        int isVip = 0;        // 0 free, 1 and 2 paid chapters, 3 sealed for seven days
        bool strip = false;   // very tall strip pages
        qint64 clickTotal = 0;
        qint64 lastUpdateTime = 0;
        qint64 threadId = 0;
        int baseTickets = 0;
        int baseGradeCount = 0;
        int baseGradeSum = 0; // sum of scores on the 0-10 scale
        int baseFavourites = 0;
        QList<Chapter> chapters;
        const Chapter *lastReleased() const;
        // The newest chapter out at `now` (passed, or released with a null pass
        // time), none before the first. lastUpdateTime is its time at the anchor;
        // what the reader is told about updates follows the clock, so a sealed
        // chapter that passes after the anchor is news to his shelf.
        const Chapter *latestOutAt(qint64 now) const;
    };
    struct Slide
    {
        int number = 0;
        int type = 0; // 0 opens a comic, 1 a web address
        qint64 comicId = 0;
        QString comicName;
        QString title;
        QString urlPath; // for type 1, relative to the site
        int sort = 0;
    };
    struct Keyword
    {
        QString tag;
        int count = 0;
    };

    static constexpr qint64 kDay = 86400;

    SiteCatalogue(quint32 seed, qint64 anchor, int longChapterPages = 60);

    quint32 seed() const { return m_seed; }
    qint64 anchor() const { return m_anchor; }
    const QList<Comic> &comics() const { return m_comics; }
    const QList<Slide> &slides() const { return m_slides; }
    const QList<Keyword> &keywords() const { return m_keywords; }
    const Comic *comic(qint64 id) const;
    const Comic *comicByThread(qint64 threadId) const;
    const Chapter *chapter(qint64 id) const;
    const Page *page(qint64 id, const Chapter **chapter = nullptr, const Comic **comic = nullptr) const;
    int pageCount() const { return int(m_pageIndex.size()); }

    // Labels used on drawn images and in texts.
    static QString themeLabel(const QString &code);
    static QStringList themeCodes();
    static QStringList serifLines(quint64 salt, int count);

private:
    struct PageRef
    {
        int comic = 0;
        int chapter = 0;
        int page = 0;
    };
    void build();

    quint32 m_seed;
    int m_longChapterPages = 60;
    qint64 m_anchor;
    QList<Comic> m_comics;
    QList<Slide> m_slides;
    QList<Keyword> m_keywords;
    QHash<qint64, int> m_comicIndex;
    QHash<qint64, int> m_threadIndex;
    QHash<qint64, QPair<int, int>> m_chapterIndex;
    QHash<qint64, PageRef> m_pageIndex;
};
