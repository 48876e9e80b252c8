// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Intake/fileaddtype.h"

#include <QStringList>
#include <QWidget>

class QUrl;

/// Takes files that are dragged onto it. A page lays its filled list inside.
class FileDragDropWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FileDragDropWidget(QWidget *parent = nullptr);

    /// Lower case, without a dot. Empty until set: nothing is taken.
    void setAllowedSuffixes(const QStringList &suffixes) { m_allowedSuffixes = suffixes; }

signals:
    /// Absolute paths, at least one.
    void filesAddActived(QStringList files, FileAddType type);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

    /// A drag that would be taken came over the widget, or is gone. Does nothing here.
    virtual void showDragOver(bool over);

private:
    QStringList allowedFiles(const QList<QUrl> &urls) const;

    QStringList m_allowedSuffixes;
};
