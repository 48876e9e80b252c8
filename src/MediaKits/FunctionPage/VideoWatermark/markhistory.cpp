// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markhistory.h"

namespace {
constexpr int mostSteps = 10;
}

void MarkHistory::reset(const QVariantList &marks)
{
    m_states.clear();
    m_present = marks;
    m_step.clear();
}

void MarkHistory::note(const QVariantList &marks, const QString &step)
{
    if (marks == m_present)
        return;
    if (step.isEmpty() || step != m_step)
        m_states += m_present;
    if (m_states.size() > mostSteps)
        m_states.removeFirst();
    m_present = marks;
    m_step = step;
}

std::optional<QVariantList> MarkHistory::back()
{
    if (m_states.isEmpty())
        return {};
    m_present = m_states.takeLast();
    m_step.clear();
    return m_present;
}
