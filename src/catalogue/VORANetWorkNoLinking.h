#pragma once

#include <QObject>
#include <QString>

// The no-network panel (view tag 8888) of a list screen: a message, the tab or
// page to request again, and a retry that asks the owner to request it.
class VORANetWorkNoLinking : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(int atag READ atag NOTIFY changed)
    Q_PROPERTY(int tag READ tag CONSTANT)
public:
    static constexpr int viewTag = 8888;

    explicit VORANetWorkNoLinking(QObject *parent = nullptr);

    bool isVisible() const { return m_visible; }
    QString text() const { return m_text; }
    int atag() const { return m_atag; }
    int tag() const { return viewTag; }

    void setAtag(int atag);
    void showWithText(const QString &text);
    void hide();

    // The retry button: hides the panel and asks for m_atag again.
    Q_INVOKABLE void retry();

signals:
    void changed();
    void retryRequested(int atag);

private:
    bool m_visible = false;
    QString m_text;
    int m_atag = 0;
};
