#include "SiteImageStore.h"

#include "SiteLog.h"
#include "SitePainter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

SiteImageStore::SiteImageStore(const SiteCatalogue &catalogue, const QString &cacheDir, QObject *parent)
    : QObject(parent), m_catalogue(catalogue), m_cacheDir(cacheDir)
{
    m_pool.setMaxThreadCount(2);
    m_memory.setMaxCost(96 * 1024); // KiB
}

SiteImageStore::~SiteImageStore()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QByteArray SiteImageStore::contentType(const QByteArray &format)
{
    if (format == "png")
        return "image/png";
    if (format == "webp")
        return "image/webp";
    return "image/jpeg";
}

bool SiteImageStore::resolve(const QString &path, Target *t) const
{
    static const QRegularExpression re(QStringLiteral("^images/(page|cover|slide|face)/([0-9]{1,12})(_ori)?\\.(jpg|png|webp)$"));
    const auto m = re.match(path);
    if (!m.hasMatch())
        return false;
    const QString kind = m.captured(1);
    t->id = m.captured(2).toLongLong();
    t->original = !m.captured(3).isEmpty();
    t->format = m.captured(4).toLatin1();
    if (kind == QLatin1String("page")) {
        const SiteCatalogue::Page *page = m_catalogue.page(t->id);
        if (!page || t->original || (t->format != page->format && t->format != "webp"))
            return false;
        t->kind = Target::Page;
    } else if (kind == QLatin1String("cover")) {
        if (!m_catalogue.comic(t->id) || t->format != "jpg")
            return false;
        t->kind = Target::Cover;
    } else if (kind == QLatin1String("slide")) {
        if (t->original || t->format != "jpg" || t->id < 1 || t->id > m_catalogue.slides().size())
            return false;
        t->kind = Target::Slide;
    } else {
        if (t->original || t->format != "png")
            return false;
        t->kind = Target::Face;
    }
    t->file = path.mid(7); // drop "images/"
    return true;
}

QByteArray SiteImageStore::draw(const Target &t) const
{
    QImage image;
    switch (t.kind) {
    case Target::Page: {
        const SiteCatalogue::Chapter *chapter = nullptr;
        const SiteCatalogue::Comic *comic = nullptr;
        const SiteCatalogue::Page *page = m_catalogue.page(t.id, &chapter, &comic);
        image = SitePainter::page(*comic, *chapter, *page);
        break;
    }
    case Target::Cover:
        image = SitePainter::cover(*m_catalogue.comic(t.id), t.original);
        break;
    case Target::Slide: {
        const SiteCatalogue::Slide &slide = m_catalogue.slides().at(int(t.id) - 1);
        image = SitePainter::slide(slide, m_catalogue.comic(slide.comicId));
        break;
    }
    case Target::Face:
        image = SitePainter::face(t.id);
        break;
    }
    return SitePainter::encode(image, t.format);
}

bool SiteImageStore::fetch(const QString &path, Done done)
{
    Target target;
    if (!resolve(path, &target))
        return false;
    const QByteArray type = contentType(target.format);
    if (const QByteArray *bytes = m_memory.object(path)) {
        done(SiteHttpResponse::bytes(*bytes, type));
        return true;
    }
    auto waiting = m_waiting.find(path);
    if (waiting != m_waiting.end()) {
        waiting->append(std::move(done));
        return true;
    }
    const QString file = m_cacheDir + QLatin1Char('/') + target.file;
    QFile cached(file);
    if (cached.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = cached.readAll();
        if (!bytes.isEmpty()) {
            m_memory.insert(path, new QByteArray(bytes), int(bytes.size() / 1024) + 1);
            done(SiteHttpResponse::bytes(bytes, type));
            return true;
        }
    }
    m_waiting.insert(path, {std::move(done)});
    m_pool.start([this, target, path, file, type] {
        const QByteArray bytes = draw(target);
        if (!bytes.isEmpty()) {
            QDir().mkpath(QFileInfo(file).absolutePath());
            QSaveFile out(file);
            if (out.open(QIODevice::WriteOnly)) {
                out.write(bytes);
                if (!out.commit())
                    qCWarning(lcSite) << "cannot write" << file;
            }
        }
        QMetaObject::invokeMethod(this, [this, path, bytes, type] { finish(path, bytes, type); }, Qt::QueuedConnection);
    });
    return true;
}

void SiteImageStore::finish(const QString &path, const QByteArray &bytes, const QByteArray &type)
{
    const QList<Done> waiting = m_waiting.take(path);
    SiteHttpResponse response;
    if (bytes.isEmpty()) {
        response = SiteHttpResponse::bytes("{\"code\":0,\"message\":\"image could not be encoded\"}",
                                           "application/json; charset=utf-8", 500);
    } else {
        m_memory.insert(path, new QByteArray(bytes), int(bytes.size() / 1024) + 1);
        response = SiteHttpResponse::bytes(bytes, type);
    }
    for (const Done &d : waiting)
        d(response);
}
