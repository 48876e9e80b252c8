// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

/// Names the case that fails, where one test function goes through several.
class CaseName
{
public:
    explicit CaseName(const char *name) : m_name(name) {}
    ~CaseName()
    {
        if (!m_hadFailed && QTest::currentTestFailed())
            qWarning("in the case \"%s\"", m_name);
    }
    Q_DISABLE_COPY(CaseName)

private:
    const char *m_name;
    bool m_hadFailed = QTest::currentTestFailed();
};
