// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/editordialog.h"

class QBoxLayout;
class TimeSpanBinding;
class TimeSpanEdit;

/// Base of the editors that mark a part of the time: adds the section with start and end, and the
/// handles of the time line. The keys I and O set start and end to where the preview stands. An
/// editor of moments has a start alone, and its time line no handles.
class TimeSpanEditor : public EditorDialog
{
    Q_OBJECT

public:
    enum Points { StartAndEnd, StartAlone };

    explicit TimeSpanEditor(QWidget *parent = nullptr, Points points = StartAndEnd);

    void setDuration(int ms) override;

protected:
    TimeSpanBinding &span() const { return *m_span; }
    TimeSpanEdit &timeSection() const { return *m_edit; }
    /// Puts a further section beside that of the time.
    void addSection(QWidget *section);

    bool handleKey(const QKeyEvent &event) override;

protected slots:
    void on_btnSCapture_clicked();
    void on_btnECapture_clicked();

private:
    const Points m_points;
    TimeSpanEdit *m_edit;
    TimeSpanBinding *m_span;
    QBoxLayout *m_sections;
};
