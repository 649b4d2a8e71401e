#include "TestHome.h"

TestHome::TestHome()
    : m_previous(qgetenv("QUORIN_HOME"))
    , m_hadPrevious(qEnvironmentVariableIsSet("QUORIN_HOME"))
{
    qputenv("QUORIN_HOME", m_dir.path().toUtf8());
}

TestHome::~TestHome()
{
    if (m_hadPrevious)
        qputenv("QUORIN_HOME", m_previous);
    else
        qunsetenv("QUORIN_HOME");
}
