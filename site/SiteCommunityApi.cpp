#include "SiteCommunityApi.h"

#include <QJsonArray>


void SiteCommunityApi::registerRoutes(SiteRouter &router)
{
    router.add(QStringLiteral("ios/pad/comment_list.php"), [this](const SiteHttpRequest &r) { return commentList(r); });
    router.add(QStringLiteral("v3/app/ios/pad/comment/replylist"), [this](const SiteHttpRequest &r) { return replyList(r); });
    router.add(QStringLiteral("ios/pad/comment_add.php"), [this](const SiteHttpRequest &r) { return addComment(r); });
    router.add(QStringLiteral("ios/pad/comment_reply.php"), [this](const SiteHttpRequest &r) { return addReply(r); });
    router.add(QStringLiteral("ios/pad/grade.php"), [this](const SiteHttpRequest &r) { return grade(r); });
    router.add(QStringLiteral("ios/pad/ticket.php"), [this](const SiteHttpRequest &r) { return ticket(r); });
}

QJsonObject SiteCommunityApi::commentJson(const SiteDatabase::Row &row, const SiteHttpRequest &r)
{
    const qint64 userId = row.at(1).toLongLong();
    return QJsonObject{
        {"comment_id", QString::number(row.at(0).toLongLong())},
        {"user_id", QString::number(userId)},
        {"nickname", row.at(2).toString()},
        {"face", m_ctx.faceUrl(r, userId)},
        {"sex", row.at(3).toString()},
        {"group_user", row.at(4).toInt()},
        {"level", QJsonObject{{"level", row.at(5).toInt()}}},
        {"content_filter", row.at(6).toString()},
        {"floor", row.at(7).toInt()},
        {"create_time", row.at(8).toLongLong()},
    };
}

const SiteCatalogue::Comic *SiteCommunityApi::threadComic(const SiteHttpRequest &r, QString *refusal)
{
    qint64 id = 0;
    const QString thread = r.param(QStringLiteral("thread_id"));
    const QString object = r.param(QStringLiteral("object_id"));
    if (thread.isEmpty() && object.isEmpty()) {
        *refusal = QStringLiteral("缺少参数 thread_id");
        return nullptr;
    }
    const SiteCatalogue::Comic *comic = nullptr;
    if (!thread.isEmpty()) {
        if (!SiteContext::readId(thread, &id)) {
            *refusal = QStringLiteral("参数错误：thread_id");
            return nullptr;
        }
        comic = m_ctx.catalogue.comicByThread(id);
    } else {
        if (!SiteContext::readId(object, &id)) {
            *refusal = QStringLiteral("参数错误：object_id");
            return nullptr;
        }
        comic = m_ctx.catalogue.comic(id);
    }
    if (!comic)
        *refusal = QStringLiteral("讨论区不存在");
    return comic;
}

SiteHttpResponse SiteCommunityApi::commentList(const SiteHttpRequest &r)
{
    QString refusal;
    const SiteCatalogue::Comic *comic = threadComic(r, &refusal);
    if (!comic)
        return SiteContext::phpRefusal(refusal);
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：page"));
    const qint64 total = m_ctx.commentTotal(comic->threadId);
    const auto rows = m_ctx.db.select("SELECT comment_id, user_id, nickname, sex, group_user, level, content, floor,"
                                      " create_time FROM comments WHERE thread_id=? AND parent_id=0"
                                      " ORDER BY comment_id DESC LIMIT ? OFFSET ?",
                                      {comic->threadId, kCommentPageSize, qint64(page - 1) * kCommentPageSize});
    QJsonArray data;
    for (const auto &row : rows) {
        QJsonObject c = commentJson(row, r);
        const qint64 id = row.at(0).toLongLong();
        const qint64 replies = m_ctx.db.value("SELECT COUNT(*) FROM comments WHERE parent_id=?", {id}, 0).toLongLong();
        // The latest three replies, oldest of them first.
        auto latest = m_ctx.db.select("SELECT comment_id, user_id, nickname, sex, group_user, level, content, floor,"
                                      " create_time FROM comments WHERE parent_id=? ORDER BY comment_id DESC LIMIT 3",
                                      {id});
        std::reverse(latest.begin(), latest.end());
        QJsonArray reply;
        for (const auto &rr : std::as_const(latest))
            reply.append(commentJson(rr, r));
        c.insert(QStringLiteral("total_reply"), replies);
        c.insert(QStringLiteral("reply"), reply);
        data.append(c);
    }
    const qint64 pages = (total + kCommentPageSize - 1) / kCommentPageSize;
    return SiteContext::php(QJsonObject{
        {"thread_id", QString::number(comic->threadId)},
        {"object_id", QString::number(comic->id)},
        {"total_comment", total},
        {"pages", QJsonObject{{"total_page", pages}, {"page", page}, {"page_size", kCommentPageSize}}},
        {"data", data},
    });
}

SiteHttpResponse SiteCommunityApi::replyList(const SiteHttpRequest &r)
{
    qint64 commentId = 0;
    if (!r.has(QStringLiteral("comment_id")))
        return SiteContext::v3Refusal(QStringLiteral("缺少参数 comment_id"), -1);
    if (!SiteContext::readId(r.param(QStringLiteral("comment_id")), &commentId))
        return SiteContext::v3Refusal(QStringLiteral("参数错误：comment_id"), -1);
    int page = 1;
    if (r.has(QStringLiteral("page")) && !SiteContext::readInt(r.param(QStringLiteral("page")), &page, 1, 100000))
        return SiteContext::v3Refusal(QStringLiteral("参数错误：page"), -1);
    const auto parent = m_ctx.db.select("SELECT thread_id FROM comments WHERE comment_id=? AND parent_id=0", {commentId});
    if (parent.isEmpty())
        return SiteContext::v3Refusal(QStringLiteral("评论不存在"), -1);
    qint64 thread = 0;
    if (!r.param(QStringLiteral("thread_id")).isEmpty()
        && (!SiteContext::readId(r.param(QStringLiteral("thread_id")), &thread) || thread != parent.first().at(0).toLongLong()))
        return SiteContext::v3Refusal(QStringLiteral("评论不属于这个讨论区"), -1);
    const qint64 total = m_ctx.db.value("SELECT COUNT(*) FROM comments WHERE parent_id=?", {commentId}, 0).toLongLong();
    const auto rows = m_ctx.db.select("SELECT comment_id, user_id, nickname, sex, group_user, level, content, floor,"
                                      " create_time FROM comments WHERE parent_id=? ORDER BY comment_id ASC LIMIT ? OFFSET ?",
                                      {commentId, kReplyPageSize, qint64(page - 1) * kReplyPageSize});
    QJsonArray list;
    for (const auto &row : rows)
        list.append(commentJson(row, r));
    return SiteContext::v3(QJsonObject{{"replyList", list}, {"total", total}, {"page", page}});
}

SiteHttpResponse SiteCommunityApi::addComment(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录后再评论"));
    QString refusal;
    if (r.param(QStringLiteral("thread_id")).isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("缺少参数 thread_id"));
    const SiteCatalogue::Comic *comic = threadComic(r, &refusal);
    if (!comic)
        return SiteContext::phpRefusal(refusal);
    const QString content = r.param(QStringLiteral("content")).trimmed();
    if (content.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("评论内容不能为空"));
    if (content.size() > kMaxCommentLength)
        return SiteContext::phpRefusal(QStringLiteral("评论内容不能超过%1个字").arg(kMaxCommentLength));
    const int floor = m_ctx.db.value("SELECT MAX(floor) FROM comments WHERE thread_id=? AND parent_id=0", {comic->threadId}, 0)
                          .toInt() + 1;
    m_ctx.db.run("INSERT INTO comments(thread_id, comic_id, parent_id, user_id, nickname, sex, group_user, level, content,"
                 " floor, create_time) VALUES(?,?,0,?,?,?,?,?,?,?,?)",
                 {comic->threadId, comic->id, user->id, user->nickname, user->sex, user->isVip() ? 1 : 0,
                  user->isVip() ? user->vipLevel : user->level, content, floor, SiteContext::now()});
    return SiteContext::php(QJsonObject{{"comment_id", QString::number(m_ctx.db.lastInsertId())}}, 1,
                            QStringLiteral("评论发表成功"));
}

SiteHttpResponse SiteCommunityApi::addReply(const SiteHttpRequest &r)
{
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录后再回复"));
    qint64 commentId = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("comment_id")), &commentId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：comment_id"));
    const auto parent = m_ctx.db.select("SELECT thread_id, comic_id FROM comments WHERE comment_id=? AND parent_id=0",
                                        {commentId});
    if (parent.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("评论不存在"));
    qint64 thread = 0;
    if (!r.param(QStringLiteral("thread_id")).isEmpty()
        && (!SiteContext::readId(r.param(QStringLiteral("thread_id")), &thread) || thread != parent.first().at(0).toLongLong()))
        return SiteContext::phpRefusal(QStringLiteral("评论不属于这个讨论区"));
    const QString content = r.param(QStringLiteral("content")).trimmed();
    if (content.isEmpty())
        return SiteContext::phpRefusal(QStringLiteral("回复内容不能为空"));
    if (content.size() > kMaxCommentLength)
        return SiteContext::phpRefusal(QStringLiteral("回复内容不能超过%1个字").arg(kMaxCommentLength));
    const int floor = m_ctx.db.value("SELECT MAX(floor) FROM comments WHERE parent_id=?", {commentId}, 0).toInt() + 1;
    m_ctx.db.run("INSERT INTO comments(thread_id, comic_id, parent_id, user_id, nickname, sex, group_user, level, content,"
                 " floor, create_time) VALUES(?,?,?,?,?,?,?,?,?,?,?)",
                 {parent.first().at(0), parent.first().at(1), commentId, user->id, user->nickname, user->sex,
                  user->isVip() ? 1 : 0, user->isVip() ? user->vipLevel : user->level, content, floor, SiteContext::now()});
    return SiteContext::php(QJsonObject{{"comment_id", QString::number(m_ctx.db.lastInsertId())}}, 1,
                            QStringLiteral("回复成功"));
}

SiteHttpResponse SiteCommunityApi::grade(const SiteHttpRequest &r)
{
    const QString act = r.param(QStringLiteral("act"));
    if (act != QLatin1String("get") && act != QLatin1String("add"))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：act 应为 get 或 add"));
    qint64 comicId = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("comic_id")), &comicId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：comic_id"));
    const SiteCatalogue::Comic *comic = m_ctx.catalogue.comic(comicId);
    if (!comic)
        return SiteContext::phpRefusal(QStringLiteral("漫画不存在"));
    const auto user = m_ctx.currentUser(r);
    QString message;
    if (act == QLatin1String("add")) {
        if (!user)
            return SiteContext::phpRefusal(QStringLiteral("请先登录后再评分"));
        int stars = 0;
        if (!SiteContext::readInt(r.param(QStringLiteral("grade")), &stars, 1, 5))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：grade 应为1到5"));
        if (m_ctx.db.value("SELECT 1 FROM grades WHERE user_id=? AND comic_id=?", {user->id, comicId}).isValid())
            return SiteContext::phpRefusal(QStringLiteral("您已经评过分了"));
        m_ctx.db.run("INSERT INTO grades(user_id, comic_id, grade, time) VALUES(?,?,?,?)",
                     {user->id, comicId, stars, SiteContext::now()});
        message = QStringLiteral("评分成功");
    }
    qint64 count = 0;
    double score = 0;
    m_ctx.gradeFigures(*comic, &count, &score);
    const int mine = user ? m_ctx.db.value("SELECT grade FROM grades WHERE user_id=? AND comic_id=?", {user->id, comicId}, 0)
                                .toInt()
                          : 0;
    return SiteContext::php(QJsonObject{{"comic_id", QString::number(comicId)}, {"count", count}, {"score", score},
                                        {"my_grade", mine}},
                            1, message);
}

SiteHttpResponse SiteCommunityApi::ticket(const SiteHttpRequest &r)
{
    const QString act = r.param(QStringLiteral("act"));
    if (act != QLatin1String("get") && act != QLatin1String("cast"))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：act 应为 get 或 cast"));
    const auto user = m_ctx.currentUser(r);
    if (!user)
        return SiteContext::phpRefusal(QStringLiteral("请先登录"));
    qint64 comicId = 0;
    if (!SiteContext::readId(r.param(QStringLiteral("comic_id")), &comicId))
        return SiteContext::phpRefusal(QStringLiteral("参数错误：comic_id"));
    const SiteCatalogue::Comic *comic = m_ctx.catalogue.comic(comicId);
    if (!comic)
        return SiteContext::phpRefusal(QStringLiteral("漫画不存在"));
    QString message;
    int left = user->ticket;
    if (act == QLatin1String("cast")) {
        int num = 0;
        if (!SiteContext::readInt(r.param(QStringLiteral("ticket_num")), &num, 1, 3))
            return SiteContext::phpRefusal(QStringLiteral("参数错误：ticket_num 应为1到3"));
        const QString content = r.param(QStringLiteral("ticket_content")).trimmed();
        if (content.size() > 200)
            return SiteContext::phpRefusal(QStringLiteral("留言不能超过200个字"));
        if (user->ticket < num) {
            SiteHttpResponse refusal = SiteContext::php(QJsonObject{{"ticket", user->ticket}}, 0,
                                                        QStringLiteral("月票不足，您当前有%1张月票").arg(user->ticket));
            return refusal;
        }
        m_ctx.db.begin();
        m_ctx.db.run("UPDATE users SET ticket = ticket - ? WHERE user_id=?", {num, user->id});
        m_ctx.db.run("INSERT INTO tickets(user_id, comic_id, num, content, time) VALUES(?,?,?,?,?)",
                     {user->id, comicId, num, content, SiteContext::now()});
        m_ctx.db.commit();
        left -= num;
        message = QStringLiteral("投票成功，感谢您的支持");
    }
    return SiteContext::php(QJsonObject{{"comic_id", QString::number(comicId)}, {"ticket", left},
                                        {"total_ticket", m_ctx.ticketTotal(*comic)}},
                            1, message);
}
