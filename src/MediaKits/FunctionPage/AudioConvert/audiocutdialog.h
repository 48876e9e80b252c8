// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/editordialog.h"
#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QSharedPointer>

class TimeSpanBinding;

/// Marks what is to be kept of a sound.
class AudioCutDialog : public EditorDialog
{
    Q_OBJECT

public:
    explicit AudioCutDialog(QWidget *parent = nullptr);

    /// Starts the preview; a sound without a picture is drawn as its wave.
    void start(const QString &path, const QStringList &options);
    void setDuration(int ms) override;
    void setTimeRange(const QSharedPointer<TimeSpan> &range);
    /// Null stands for the whole sound.
    QSharedPointer<TimeSpan> timeRange() const { return m_timeRange; }

protected slots:
    void on_btnSave_clicked() override;
    void on_btnSCapture_clicked();
    void on_btnECapture_clicked();

private:
    QSharedPointer<TimeSpan> m_timeRange;
    TimeSpanBinding *m_span;
};
