// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"

#include "controls/interceptslider.h"

#include <QSignalBlocker>
#include <QTimeEdit>

#include <algorithm>
#include <cmath>

namespace {

// What a time edit can show at most.
constexpr int lastMs = 24 * 60 * 60 * 1000 - 1;

QTime timeOf(int ms)
{
    return QTime(0, 0).addMSecs(std::min(ms, lastMs));
}

int msOf(const QTime &time)
{
    return QTime(0, 0).msecsTo(time);
}

} // namespace

TimeSpanBinding::TimeSpanBinding(const Parts &parts, QObject *parent)
    : QObject(parent), m_parts(parts)
{
    connect(parts.start, &QTimeEdit::timeChanged, this, &TimeSpanBinding::onStartEdited);
    connect(parts.end, &QTimeEdit::timeChanged, this, &TimeSpanBinding::onEndEdited);
    connect(parts.scrubBar, &InterceptSlider::leftValueChanged, this,
            &TimeSpanBinding::onLeftDragged);
    connect(parts.scrubBar, &InterceptSlider::rightValueChanged, this,
            &TimeSpanBinding::onRightDragged);
}

void TimeSpanBinding::setDuration(int ms)
{
    m_duration = ms;
    m_parts.end->setMaximumTime(timeOf(ms));
    m_parts.end->setTime(timeOf(ms));
}

int TimeSpanBinding::start() const
{
    return msOf(m_parts.start->time());
}

int TimeSpanBinding::end() const
{
    const int ms = msOf(m_parts.end->time());
    return ms == lastMs ? m_duration : ms;
}

void TimeSpanBinding::setStart(int ms)
{
    m_parts.start->setTime(timeOf(ms));
}

void TimeSpanBinding::setEnd(int ms)
{
    m_parts.end->setTime(timeOf(ms));
}

void TimeSpanBinding::setSpan(const QSharedPointer<TimeSpan> &span)
{
    if (!span)
        return;
    setEnd(span->end);
    setStart(span->start);
}

QSharedPointer<TimeSpan> TimeSpanBinding::span(int tolerance) const
{
    if (start() == 0 && std::abs(m_duration - end()) <= tolerance)
        return {};
    return QSharedPointer<TimeSpan>::create(TimeSpan{start(), end()});
}

void TimeSpanBinding::onStartEdited(const QTime &time)
{
    m_parts.end->setMinimumTime(time);
    const QSignalBlocker blocker(m_parts.scrubBar);
    m_parts.scrubBar->setLeftValue(msOf(time));
    emit pointChanged(msOf(time));
}

void TimeSpanBinding::onEndEdited(const QTime &time)
{
    m_parts.start->setMaximumTime(time);
    const QSignalBlocker blocker(m_parts.scrubBar);
    m_parts.scrubBar->setRightValue(msOf(time));
    emit pointChanged(msOf(time));
}

void TimeSpanBinding::onLeftDragged(int ms)
{
    {
        const QSignalBlocker blocker(m_parts.start);
        m_parts.start->setTime(timeOf(ms));
    }
    m_parts.end->setMinimumTime(timeOf(ms));
    emit pointChanged(ms);
}

void TimeSpanBinding::onRightDragged(int ms)
{
    {
        const QSignalBlocker blocker(m_parts.end);
        m_parts.end->setTime(timeOf(ms));
    }
    m_parts.start->setMaximumTime(timeOf(ms));
    emit pointChanged(ms);
}
