#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A fresh, empty app home for one test run: points QUORIN_HOME at a temporary
// directory for as long as the object lives, and restores the old value after.
class TestHome
{
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome &) = delete;
    TestHome &operator=(const TestHome &) = delete;

    QString path() const { return m_dir.path(); }
    QString filePath(const QString &relative) const { return m_dir.filePath(relative); }

private:
    QTemporaryDir m_dir;
    QByteArray m_previous;
    bool m_hadPrevious = false;
};
