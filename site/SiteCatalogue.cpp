#include "SiteCatalogue.h"

#include "SiteRandom.h"

#include <QSet>

namespace {
struct Prefix
{
    const char *text;
    const char *letter;
};

const Prefix kPrefixes[] = {
    {"星辰", "X"}, {"龙骨", "L"}, {"月下", "Y"}, {"雾城", "W"}, {"赤焰", "C"}, {"青鸟", "Q"}, {"夜行", "Y"},
    {"蓝海", "L"}, {"白夜", "B"}, {"铁翼", "T"}, {"幻影", "H"}, {"樱花", "Y"}, {"风暴", "F"}, {"深渊", "S"},
    {"银河", "Y"}, {"黄昏", "H"}, {"雪国", "X"}, {"狐仙", "H"}, {"机甲", "J"}, {"迷雾", "M"}, {"南山", "N"},
    {"古城", "G"}, {"天空", "T"}, {"猫町", "M"}, {"剑心", "J"}, {"潮汐", "C"}, {"极光", "J"}, {"彼岸", "B"},
};
const char *const kSuffixes[] = {
    "传说", "物语", "之歌", "少年", "学园", "侦探", "骑士", "日记", "奇谭", "战记", "食堂", "旅人", "密码", "之门",
    "大作战", "异闻录", "守望者", "漫游记",
};
const char *const kSurnames[] = {"林", "陈", "王", "李", "张", "周", "吴", "苏", "叶", "沈", "顾", "江", "白", "唐"};
const char *const kGiven[] = {"小鱼", "青山", "墨", "一刀", "月影", "七七", "南风", "半夏",
                              "北辰", "无名", "阿狸", "晓星", "十三", "暮雪"};
const char *const kBlurbs[] = {
    "一个普通的少年在放学路上捡到了一枚会说话的硬币，从此他的生活再也不普通了。",
    "被遗忘的古城里藏着七把钥匙，找到它们的人将改写整个王国的命运。",
    "她每天都在同一家食堂吃饭，直到那天窗口后面换了一位奇怪的厨师。",
    "机甲、星舰与友情：银河边境的少年驾驶员们踏上了没有归途的远征。",
    "名侦探与他的猫助手，专门解决那些连警察都不愿碰的离奇案件。",
    "每到月圆之夜，城里的狐仙就会出来开一家只卖回忆的小店。",
    "两个性格完全相反的室友，在一次次吵架中慢慢成为了彼此最重要的人。",
    "末日之后的世界里，最后一支乐队仍在废墟之间巡回演出。",
    "一部关于热血、汗水与篮球场上每一秒钟的青春群像。",
    "雨夜的电话亭里，传来了十年前自己的声音。",
};
const char *const kSubtitles[] = {
    "初遇", "秘密", "雨夜", "约定", "决战前夕", "归来", "失落的钥匙", "旧照片", "新的旅程", "心跳",
    "暗流", "黎明", "告白", "真相", "迷宫", "重逢", "背叛", "守护", "星空下", "最后的夏天",
};
const char *const kThemeLabels[][2] = {
    {"1", "搞笑"}, {"2", "魔幻"}, {"3", "生活"}, {"4", "恋爱"}, {"5", "动作"}, {"6", "科幻"},
    {"7", "战争"}, {"8", "体育"}, {"9", "推理"}, {"11", "恐怖"}, {"12", "其他"},
};
const char *const kSerifs[] = {
    "等等我！", "这是什么？", "不可能……", "我们走吧。", "你终于来了。", "小心背后！", "哈哈哈哈！",
    "原来如此。", "我不会输的！", "今天天气真好。", "谁在那里？", "别跑！", "谢谢你。", "……", "好饿啊。",
    "就是现在！", "相信我。", "怎么会这样？",
};
}

const SiteCatalogue::Chapter *SiteCatalogue::Comic::lastReleased() const
{
    const Chapter *best = nullptr;
    for (const Chapter &c : chapters) {
        if (!best || c.releaseTime >= best->releaseTime)
            best = &c;
    }
    return best;
}

const SiteCatalogue::Chapter *SiteCatalogue::Comic::latestOutAt(qint64 now) const
{
    const Chapter *last = nullptr;
    for (const Chapter &ch : chapters) {
        if (ch.effectivePassTime() <= now && (!last || ch.effectivePassTime() >= last->effectivePassTime()))
            last = &ch;
    }
    return last;
}

SiteCatalogue::SiteCatalogue(quint32 seed, qint64 anchor, int longChapterPages)
    : m_seed(seed), m_longChapterPages(qBound(1, longChapterPages, 2000)), m_anchor(anchor)
{
    build();
}

QString SiteCatalogue::themeLabel(const QString &code)
{
    for (const auto &t : kThemeLabels) {
        if (code == QLatin1String(t[0]))
            return QString::fromUtf8(t[1]);
    }
    return {};
}

QStringList SiteCatalogue::themeCodes()
{
    QStringList out;
    for (const auto &t : kThemeLabels)
        out << QString::fromLatin1(t[0]);
    return out;
}

QStringList SiteCatalogue::serifLines(quint64 salt, int count)
{
    SiteRandom rng(salt);
    QStringList out;
    const int n = int(sizeof(kSerifs) / sizeof(kSerifs[0]));
    for (int i = 0; i < count; ++i)
        out << QString::fromUtf8(kSerifs[rng.range(0, n - 1)]);
    return out;
}

void SiteCatalogue::build()
{
    SiteRandom rng(0x51A7E000ull ^ (quint64(m_seed) * 0x9E3779B1ull));
    const int comicCount = 60;
    const QStringList themes = themeCodes();
    QSet<QString> names;
    qint64 nextChapterId = 40001;
    qint64 nextPageId = 800001;
    int sealedOrdinal = 0;
    int paid2Ordinal = 0;
    const int prefixCount = int(sizeof(kPrefixes) / sizeof(kPrefixes[0]));
    const int suffixCount = int(sizeof(kSuffixes) / sizeof(kSuffixes[0]));

    for (int i = 0; i < comicCount; ++i) {
        Comic c;
        c.id = 10001 + i;
        c.ordinal = i;
        c.threadId = 500000 + c.id;
        for (;;) {
            const Prefix &p = kPrefixes[rng.range(0, prefixCount - 1)];
            const QString name = QString::fromUtf8(p.text) + QString::fromUtf8(kSuffixes[rng.range(0, suffixCount - 1)]);
            if (!names.contains(name)) {
                names.insert(name);
                c.name = name;
                c.firstLetter = QString::fromLatin1(p.letter);
                break;
            }
        }
        c.author = QString::fromUtf8(kSurnames[rng.range(0, 13)]) + QString::fromUtf8(kGiven[rng.range(0, 13)]);
        const int b1 = int(rng.range(0, 9));
        const int b2 = int((b1 + rng.range(1, 9)) % 10);
        c.description = QStringLiteral("「%1」").arg(c.name) + QString::fromUtf8(kBlurbs[b1])
            + QString::fromUtf8(kBlurbs[b2]);
        const QString t1 = themes.at(i % themes.size());
        QString t2 = rng.pick(themes);
        c.themeIds = t1 == t2 ? t1 : t1 + QLatin1Char(',') + t2;
        c.groupIds = QString::number(rng.range(1, 4));
        switch (i % 6) {
        case 1: c.isVip = 1; break;
        case 3: c.isVip = 2; break;
        case 5: c.isVip = 3; break;
        default: c.isVip = 0; break;
        }
        c.accredit = i % 5 == 0 ? 1 : (i % 5 == 2 ? 2 : 0);
        c.strip = i % 10 == 4;
        const int s = int(rng.range(0, 99));
        c.seriesStatus = c.isVip == 3 ? 0 : (s < 65 ? 0 : (s < 93 ? 1 : 2));
        c.readOrder = int(rng.range(0, 1));
        c.clickTotal = rng.range(1000, 5000000);
        c.baseTickets = int(rng.range(0, 3000));
        c.baseGradeCount = int(rng.range(3, 900));
        c.baseGradeSum = int(c.baseGradeCount * rng.range(40, 98) / 10);
        c.baseFavourites = int(rng.range(0, 20000));

        int chapterCount = int(rng.range(3, 40));
        if (c.isVip == 3 || i == 0)
            chapterCount = qMax(chapterCount, 6);
        if (c.isVip == 1 || c.isVip == 2)
            chapterCount = qMax(chapterCount, 5);
        const qint64 newest = c.seriesStatus == 0 ? m_anchor - rng.range(0, 20 * kDay)
                                                  : m_anchor - rng.range(30 * kDay, 400 * kDay);
        for (int k = 0; k < chapterCount; ++k) {
            Chapter ch;
            ch.id = nextChapterId++;
            ch.comicId = c.id;
            ch.index = k;
            ch.name = QStringLiteral("第%1话 %2").arg(k + 1).arg(QString::fromUtf8(kSubtitles[rng.range(0, 19)]));
            ch.releaseTime = newest - qint64(chapterCount - 1 - k) * 7 * kDay - rng.range(0, 3600);
            ch.passTime = ch.releaseTime;
            if (c.isVip == 0 && k % 4 == 1)
                ch.passTimeNull = true;
            if (c.isVip == 1 || c.isVip == 2) {
                if (k >= 3) {
                    ch.type = 2;
                    ch.price = int(rng.range(1, 6)) * 10;
                    if (c.isVip == 2 && k == 3)
                        ch.price = 0;
                }
            }
            int pageCount = int(rng.range(6, 40));
            if (i == 0 && k == 0)
                pageCount = m_longChapterPages;
            QByteArray format = "jpg";
            if (!c.strip && k % 5 == 3)
                format = "png";
            else if (!c.strip && k % 5 == 4)
                format = "webp";
            int kb = 0;
            for (int p = 0; p < pageCount; ++p) {
                Page pg;
                pg.id = nextPageId++;
                pg.index = p;
                pg.format = format;
                if (c.strip) {
                    pg.width = 720;
                    pg.height = p % 3 == 2 ? 3000 : 4600;
                } else if (p % 9 == 7) {
                    pg.width = 1600;
                    pg.height = 1130;
                } else {
                    pg.width = 800;
                    pg.height = 1130;
                }
                kb += format == "png" ? 600 : (c.strip ? 420 : 130);
                ch.pages.append(pg);
            }
            ch.sizeKb = kb;
            c.chapters.append(ch);
        }
        if (c.isVip == 3) {
            // The newest chapters straddle the seven-day seal: one in the future (more
            // or less than a day ahead, by comic), two inside the seal, one just out.
            const int n = int(c.chapters.size());
            const qint64 future = sealedOrdinal % 2 == 0 ? 2 * kDay : 12 * 3600;
            const qint64 offsets[] = {future, -2 * kDay, -(7 * kDay - 3600), -(8 * kDay)};
            for (int j = 0; j < 4; ++j) {
                Chapter &ch = c.chapters[n - 1 - j];
                ch.passTime = m_anchor + offsets[j];
                ch.releaseTime = ch.passTime - 3600;
            }
            for (int k = n - 5; k >= 0; --k)
                c.chapters[k].releaseTime = c.chapters[k].passTime = c.chapters[k + 1].releaseTime - 7 * kDay;
            ++sealedOrdinal;
        }
        if (c.isVip == 2)
            ++paid2Ordinal;
        c.lastUpdateTime = 0;
        for (const Chapter &ch : std::as_const(c.chapters)) {
            const qint64 t = ch.effectivePassTime();
            if (t <= m_anchor)
                c.lastUpdateTime = qMax(c.lastUpdateTime, t);
        }
        m_comics.append(c);
    }

    for (int ci = 0; ci < m_comics.size(); ++ci) {
        const Comic &c = m_comics.at(ci);
        m_comicIndex.insert(c.id, ci);
        m_threadIndex.insert(c.threadId, ci);
        for (int k = 0; k < c.chapters.size(); ++k) {
            m_chapterIndex.insert(c.chapters.at(k).id, {ci, k});
            const QList<Page> &pages = c.chapters.at(k).pages;
            for (int p = 0; p < pages.size(); ++p)
                m_pageIndex.insert(pages.at(p).id, PageRef{ci, k, p});
        }
    }

    const int slideComics[] = {0, 7, 13};
    int n = 1;
    for (int j = 0; j < 5; ++j) {
        Slide s;
        s.number = n++;
        s.sort = j + 1;
        if (j == 2 || j == 4) {
            s.type = 1;
            s.title = j == 2 ? QStringLiteral("夏日漫画节：新作抢先看") : QStringLiteral("月票榜单公布，快来支持你喜欢的作品");
            s.urlPath = QStringLiteral("web/event/%1.html").arg(s.number);
        } else {
            const Comic &c = m_comics.at(slideComics[j == 0 ? 0 : (j == 1 ? 1 : 2)]);
            s.type = 0;
            s.comicId = c.id;
            s.comicName = c.name;
            s.title = QStringLiteral("本周推荐：%1").arg(c.name);
        }
        m_slides.append(s);
    }

    const char *const themesWords[] = {"恋爱", "科幻", "推理", "热血", "校园", "机甲"};
    for (int j = 0; j < 8; ++j)
        m_keywords.append({m_comics.at(j * 7).name, 0});
    for (int j = 0; j < 5; ++j)
        m_keywords.append({m_comics.at(j * 11 + 3).author, 0});
    for (const char *w : themesWords)
        m_keywords.append({QString::fromUtf8(w), 0});
    QSet<QString> seen;
    QList<Keyword> unique;
    for (Keyword k : std::as_const(m_keywords)) {
        if (seen.contains(k.tag))
            continue;
        seen.insert(k.tag);
        k.count = int(rng.range(100, 99999));
        unique.append(k);
    }
    std::sort(unique.begin(), unique.end(), [](const Keyword &a, const Keyword &b) { return a.count > b.count; });
    m_keywords = unique;
}

const SiteCatalogue::Comic *SiteCatalogue::comic(qint64 id) const
{
    auto it = m_comicIndex.constFind(id);
    return it == m_comicIndex.constEnd() ? nullptr : &m_comics.at(*it);
}

const SiteCatalogue::Comic *SiteCatalogue::comicByThread(qint64 threadId) const
{
    auto it = m_threadIndex.constFind(threadId);
    return it == m_threadIndex.constEnd() ? nullptr : &m_comics.at(*it);
}

const SiteCatalogue::Chapter *SiteCatalogue::chapter(qint64 id) const
{
    auto it = m_chapterIndex.constFind(id);
    return it == m_chapterIndex.constEnd() ? nullptr : &m_comics.at(it->first).chapters.at(it->second);
}

const SiteCatalogue::Page *SiteCatalogue::page(qint64 id, const Chapter **chapter, const Comic **comic) const
{
    auto it = m_pageIndex.constFind(id);
    if (it == m_pageIndex.constEnd())
        return nullptr;
    const Comic &c = m_comics.at(it->comic);
    const Chapter &ch = c.chapters.at(it->chapter);
    if (chapter)
        *chapter = &ch;
    if (comic)
        *comic = &c;
    return &ch.pages.at(it->page);
}
