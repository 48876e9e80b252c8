// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QObject>
#include <QSharedPointer>

class InterceptSlider;
class QTimeEdit;

/// Keeps two time edits and the handles of a time line together: what is changed in one shows in
/// the others, and the span always has a length. A time that is being typed counts as soon as it
/// fits; what it means for the other end is decided when the typing ends.
class TimeSpanBinding : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        QTimeEdit *start;
        QTimeEdit *end;            ///< null for a start alone
        InterceptSlider *scrubBar; ///< null when its handles stand for something else
    };

    /// An end this near to the medium's own, in ms, usually cuts nothing.
    static constexpr int endTolerance = 499;

    /// The parts outlive the binding. With neither end nor time line, the span reaches to the
    /// medium's end.
    TimeSpanBinding(const Parts &parts, QObject *parent);

    /// The whole medium becomes the span.
    /// @param ms its length
    /// @param shortest ms that a span has at least
    void setDuration(int ms, int shortest);

    // ms from the beginning
    int start() const { return m_span.start; }
    int end() const { return m_span.end; }
    /// A start behind the end lets the span reach to the medium's end, an end before the start lets
    /// it begin with the medium; where even that leaves no length, the span stays.
    void setStart(int ms);
    void setEnd(int ms);
    /// Shows an earlier result; null leaves what is shown.
    void setSpan(const QSharedPointer<TimeSpan> &span);

    /// The span as a result: null when it is the whole medium.
    /// @param tolerance ms by which the end may miss the medium's
    QSharedPointer<TimeSpan> span(int tolerance) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// Start or end was changed to this; the preview is to show the frame.
    void pointChanged(int ms);
    /// What had to differ from what was asked for, in words for the user; empty for nothing.
    void remarked(const QString &remark);

private:
    enum Point { StartPoint, EndPoint };
    struct Outcome
    {
        TimeSpan span;
        QString remark;
    };

    void connectField(Point point);
    void onEdited(Point point);
    void onEditEnded(Point point);
    void beginChange();
    QTimeEdit *field(Point point) const;
    int typed(Point point) const;
    int placeOf(Point point) const { return point == StartPoint ? m_span.start : m_span.end; }
    Outcome moved(Point point, int ms) const;
    Outcome startMoved(int ms) const;
    Outcome endMoved(int ms) const;
    void settle(Point point, const Outcome &outcome);
    void drag(Point point, int ms);
    void show();
    void showFields();

    const Parts m_parts;
    int m_duration = 0;
    int m_shortest = 0;
    TimeSpan m_span;
    TimeSpan m_before; // from before the present change, or the typing of it
    bool m_isTyped = false;
};
