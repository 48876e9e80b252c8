// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QSharedPointer>

/// Marks what is to be kept of a sound.
class AudioCutDialog : public TimeSpanEditor
{
    Q_OBJECT

public:
    explicit AudioCutDialog(QWidget *parent = nullptr);

    /// Starts the preview; a sound without a picture is drawn as its wave.
    void start(const QString &path, const QStringList &options);
    void setTimeRange(const QSharedPointer<TimeSpan> &range);
    /// Null stands for the whole sound.
    QSharedPointer<TimeSpan> timeRange() const { return m_timeRange; }

protected:
    bool isChanged() const override;

private slots:
    void on_btnSave_clicked();

private:
    QSharedPointer<TimeSpan> marked() const;

    QSharedPointer<TimeSpan> m_timeRange;
};
