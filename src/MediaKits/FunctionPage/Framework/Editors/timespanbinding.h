// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QObject>
#include <QSharedPointer>

class InterceptSlider;
class QTimeEdit;

/// Keeps two time edits and the handles of a time line together: what is changed in one shows in
/// the others, and start and end never cross.
class TimeSpanBinding : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        QTimeEdit *start;
        QTimeEdit *end;
        InterceptSlider *scrubBar;
    };

    /// An end this near to the medium's own, in ms, usually cuts nothing.
    static constexpr int endTolerance = 499;

    /// The parts outlive the binding.
    TimeSpanBinding(const Parts &parts, QObject *parent);

    /// The whole medium becomes the span.
    /// @param ms its length
    void setDuration(int ms);

    // ms from the beginning
    int start() const;
    int end() const;
    void setStart(int ms);
    void setEnd(int ms);
    /// Shows an earlier result; null leaves what is shown.
    void setSpan(const QSharedPointer<TimeSpan> &span);

    /// The span as a result: null when it is the whole medium.
    /// @param tolerance ms by which the end may miss the medium's
    QSharedPointer<TimeSpan> span(int tolerance) const;

signals:
    /// Start or end was changed to this; the preview is to show the frame.
    void pointChanged(int ms);

private:
    void onStartEdited(const QTime &time);
    void onEndEdited(const QTime &time);
    void onLeftDragged(int ms);
    void onRightDragged(int ms);

    const Parts m_parts;
    int m_duration = 0;
};
