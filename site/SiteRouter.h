#pragma once

#include "SiteHttpRequest.h"
#include "SiteHttpResponse.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

// Path → service handler. Every service answers GET and POST alike (parameters
// come from the query and the form body).
class SiteRouter
{
public:
    using Handler = std::function<SiteHttpResponse(const SiteHttpRequest &)>;

    void add(const QString &path, Handler handler) { m_routes.insert(path, std::move(handler)); }
    const Handler *find(const QString &path) const
    {
        auto it = m_routes.constFind(path);
        return it == m_routes.constEnd() ? nullptr : &*it;
    }
    QStringList paths() const { return m_routes.keys(); }

private:
    QHash<QString, Handler> m_routes;
};
