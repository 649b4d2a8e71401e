#pragma once

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QString>

// Fault knobs of the reference site. Every setter and getter may be called from
// any thread. A path of "*" stands for every path; paths carry no leading "/".
class QuorinSiteFaults
{
public:
    struct ErrorStatus
    {
        int status = 0;
        QByteArray body;
    };

    void setLatencyMs(int ms);
    // Accept the connection, read the request, never answer.
    void setStall(const QString &path, bool on = true);
    // Answer with this HTTP status and body.
    void setErrorStatus(const QString &path, int status, const QByteArray &body);
    // Answer 200 with this body in place of the real answer.
    void setMalformed(const QString &path, const QByteArray &body);
    // Send the headers with the full Content-Length, part of the body, then close.
    void setDropMidBody(const QString &path, bool on = true);
    // Gzip answers when the request's Accept-Encoding allows it.
    void setGzip(bool on);
    void clear();

    int latencyMs() const;
    bool gzip() const;
    bool stalls(const QString &path) const;
    bool dropsMidBody(const QString &path) const;
    bool errorStatus(const QString &path, ErrorStatus *out) const;
    bool malformed(const QString &path, QByteArray *out) const;

private:
    mutable QMutex m_mutex;
    int m_latencyMs = 0;
    bool m_gzip = false;
    QSet<QString> m_stall;
    QSet<QString> m_drop;
    QHash<QString, ErrorStatus> m_errors;
    QHash<QString, QByteArray> m_malformed;
};
