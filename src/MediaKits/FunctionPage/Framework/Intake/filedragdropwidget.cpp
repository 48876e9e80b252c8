// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Intake/filedragdropwidget.h"

#include "MediaKits/MediaFormats/mediaformats.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

FileDragDropWidget::FileDragDropWidget(QWidget *parent) : QWidget(parent)
{
    setAcceptDrops(true);
}

void FileDragDropWidget::dragEnterEvent(QDragEnterEvent *event)
{
    if (!acceptsUrls(event->mimeData()->urls(), m_allowedSuffixes))
        return;
    event->acceptProposedAction();
    showDragOver(true);
}

void FileDragDropWidget::dragLeaveEvent(QDragLeaveEvent *event)
{
    QWidget::dragLeaveEvent(event);
    showDragOver(false);
}

void FileDragDropWidget::dropEvent(QDropEvent *event)
{
    showDragOver(false);
    const QStringList files = allowedFiles(event->mimeData()->urls());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    emit filesAddActived(files, FileAddType::Dragged);
}

void FileDragDropWidget::showDragOver(bool over)
{
    Q_UNUSED(over)
}

QStringList FileDragDropWidget::allowedFiles(const QList<QUrl> &urls) const
{
    QStringList files;
    for (const QUrl &url : urls) {
        const QFileInfo info(url.toLocalFile());
        // A folder may be called "clips.mp4".
        if (url.isLocalFile() && m_allowedSuffixes.contains(info.suffix().toLower()) &&
            !info.isDir())
            files.append(info.filePath());
    }
    return files;
}
