// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"

#include "controls/interceptslider.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QTimeEdit>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// What a time edit can show at most.
constexpr int lastMs = 24 * 60 * 60 * 1000 - 1;

QTime timeOf(int ms)
{
    return QTime(0, 0).addMSecs(std::min(ms, lastMs));
}

// Limits hold for everything but typing, which has to pass through other times.
void showInField(QTimeEdit *field, int least, int most, int ms)
{
    const QSignalBlocker blocker(field);
    if (field->hasFocus())
        field->setTimeRange(timeOf(0), timeOf(lastMs));
    else
        field->setTimeRange(timeOf(least), timeOf(most));
    field->setTime(timeOf(ms));
}

} // namespace

TimeSpanBinding::TimeSpanBinding(const Parts &parts, QObject *parent)
    : QObject(parent), m_parts(parts)
{
    connectField(StartPoint);
    if (parts.end)
        connectField(EndPoint);
    if (!parts.scrubBar)
        return;
    connect(parts.scrubBar, &InterceptSlider::leftValueChanged, this,
            [this](int ms) { drag(StartPoint, ms); });
    connect(parts.scrubBar, &InterceptSlider::rightValueChanged, this,
            [this](int ms) { drag(EndPoint, ms); });
}

void TimeSpanBinding::connectField(Point point)
{
    QTimeEdit *edit = field(point);
    edit->installEventFilter(this);
    connect(edit, &QTimeEdit::timeChanged, this, [this, point] { onEdited(point); });
    connect(edit, &QTimeEdit::editingFinished, this, [this, point] { onEditEnded(point); });
}

// Times that only stood there on the way leave no trace.
void TimeSpanBinding::onEdited(Point point)
{
    const bool isTyped = field(point)->hasFocus();
    if (!std::exchange(m_isTyped, isTyped))
        m_before = m_span;
    const Outcome outcome = moved(point, typed(point));
    if (outcome.remark.isEmpty() || !isTyped)
        settle(point, outcome);
}

void TimeSpanBinding::onEditEnded(Point point)
{
    if (std::exchange(m_isTyped, false))
        settle(point, moved(point, typed(point)));
    show();
}

bool TimeSpanBinding::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        static_cast<QTimeEdit *>(watched)->setTimeRange(timeOf(0), timeOf(lastMs));
    return QObject::eventFilter(watched, event);
}

QTimeEdit *TimeSpanBinding::field(Point point) const
{
    return point == StartPoint ? m_parts.start : m_parts.end;
}

int TimeSpanBinding::typed(Point point) const
{
    const int ms = QTime(0, 0).msecsTo(field(point)->time());
    return ms == lastMs ? std::max(lastMs, placeOf(point)) : ms;
}

void TimeSpanBinding::setDuration(int ms, int shortest)
{
    m_isTyped = false;
    m_duration = ms;
    m_shortest = std::min(ms, shortest);
    m_span = {0, ms};
    show();
}

// Whatever is being typed meanwhile.
void TimeSpanBinding::beginChange()
{
    m_isTyped = false;
    m_before = m_span;
}

void TimeSpanBinding::setStart(int ms)
{
    beginChange();
    settle(StartPoint, startMoved(ms));
}

void TimeSpanBinding::setEnd(int ms)
{
    beginChange();
    settle(EndPoint, endMoved(ms));
}

void TimeSpanBinding::setSpan(const QSharedPointer<TimeSpan> &span)
{
    if (!span)
        return;
    m_isTyped = false;
    m_span = {span->start, std::min(span->end, m_duration)};
    show();
    emit pointChanged(m_span.start);
}

QSharedPointer<TimeSpan> TimeSpanBinding::span(int tolerance) const
{
    if (m_span.start == 0 && std::abs(m_duration - m_span.end) <= tolerance)
        return {};
    return QSharedPointer<TimeSpan>::create(m_span);
}

TimeSpanBinding::Outcome TimeSpanBinding::moved(Point point, int ms) const
{
    return point == StartPoint ? startMoved(ms) : endMoved(ms);
}

TimeSpanBinding::Outcome TimeSpanBinding::startMoved(int ms) const
{
    if (ms > m_duration - m_shortest)
        return {m_before, tr("开始时间必须早于片尾")};
    if (m_before.end - ms >= m_shortest)
        return {{ms, m_before.end}, {}};
    return {{ms, m_duration}, tr("开始时间晚于结束时间，结束时间已移到片尾")};
}

TimeSpanBinding::Outcome TimeSpanBinding::endMoved(int ms) const
{
    if (ms < m_shortest)
        return {m_before, tr("结束时间必须晚于片头")};
    const int end = std::min(ms, m_duration);
    if (end - m_before.start < m_shortest)
        return {{0, end}, tr("结束时间早于开始时间，开始时间已移到片头")};
    return {{m_before.start, end},
            ms > m_duration ? tr("超出了片长，结束时间已移到片尾") : QString()};
}

void TimeSpanBinding::settle(Point point, const Outcome &outcome)
{
    m_span = outcome.span;
    show();
    emit pointChanged(placeOf(point));
    emit remarked(outcome.remark);
}

// The handle stays where it was dragged to, as its place is finer than its value in a short medium.
void TimeSpanBinding::drag(Point point, int ms)
{
    beginChange();
    if (point == StartPoint)
        m_span.start = std::min(ms, m_span.end - m_shortest);
    else
        m_span.end = std::max(ms, m_span.start + m_shortest);
    const bool isHeldBack = placeOf(point) != ms;
    showFields();
    if (isHeldBack)
        show();
    emit pointChanged(placeOf(point));
    emit remarked({});
}

void TimeSpanBinding::showFields()
{
    showInField(m_parts.start, 0, m_span.end, m_span.start);
    if (m_parts.end)
        showInField(m_parts.end, m_span.start, m_duration, m_span.end);
}

void TimeSpanBinding::show()
{
    showFields();
    if (!m_parts.scrubBar)
        return;
    m_parts.scrubBar->setLeftValue(m_span.start);
    m_parts.scrubBar->setRightValue(m_span.end);
}
