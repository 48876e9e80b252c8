// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/recordnotices.h"

#include "MediaKits/FunctionPage/ScreenRecord/fileoffer.h"

#include <QFileInfo>
#include <QLabel>
#include <QVariant>
#include <QVBoxLayout>

RecordNotices::RecordNotices(QWidget *parent)
    : QWidget(parent),
      m_remarks(new QLabel(this)),
      m_rescued(new FileOffer(this)),
      m_saved(new FileOffer(this))
{
    m_remarks->setObjectName(QStringLiteral("lblRemarks"));
    m_remarks->setProperty("cls", QStringLiteral("remarkStrip"));
    m_remarks->setWordWrap(true);
    m_remarks->setTextFormat(Qt::PlainText);
    m_remarks->hide();
    m_rescued->setObjectName(QStringLiteral("wdtRescued"));
    m_saved->setObjectName(QStringLiteral("wdtSaved"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget *strip : {static_cast<QWidget *>(m_remarks), static_cast<QWidget *>(m_rescued),
                           static_cast<QWidget *>(m_saved)})
        column->addWidget(strip);
}

void RecordNotices::setRemarks(const QStringList &lines)
{
    m_remarks->setText(lines.join(QLatin1Char('\n')));
    m_remarks->setHidden(lines.isEmpty());
}

void RecordNotices::offerRescued(const QStringList &files)
{
    const QString text =
        files.size() == 1
            ? tr("上次录制意外中断，录像已找回：%1").arg(QFileInfo(files.first()).fileName())
            : tr("上次录制意外中断，已找回 %1 个录像").arg(files.size());
    m_rescued->offer(text, files);
}

void RecordNotices::offerSaved(const QStringList &files, const QString &remark)
{
    const QString first = QFileInfo(files.first()).fileName();
    const QString text = files.size() == 1
                             ? tr("录像已保存：%1").arg(first)
                             : tr("录像已保存为 %1 个文件：%2 等").arg(files.size()).arg(first);
    m_saved->offer(remark.isEmpty() ? text : text + tr("（%1）").arg(remark), files);
}
