// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Intake/fileaddtype.h"

#include <QStringList>
#include <QWidget>

/// Row of buttons above a page's list: add files, add a folder, history, clear. Ctrl+O adds files
/// while the bar is on show in the active window.
class ComToolBarGPage : public QWidget
{
    Q_OBJECT

public:
    explicit ComToolBarGPage(QWidget *parent = nullptr);

    /// Name filters of the file dialog, as fileDialogFilter() makes them.
    void setFilter(const QString &filter) { m_filter = filter; }
    const QString &filter() const { return m_filter; }
    /// File name patterns ("*.mp4") of what is taken from a folder. Empty takes every file.
    void setAllowedPatterns(const QStringList &patterns) { m_allowedPatterns = patterns; }

signals:
    /// Absolute paths; none when the user picked a folder without a file that is allowed.
    void filesAddActived(QStringList files, FileAddType type);
    void itemclearActived();

private slots:
    void on_btnAddFile_clicked();
    void on_btnAddDir_clicked();
    void on_btnHistory_clicked();
    void on_btnClear_clicked();

private:
    QString m_filter;
    QStringList m_allowedPatterns;
};
