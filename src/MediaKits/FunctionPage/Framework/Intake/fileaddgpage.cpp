// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Intake/fileaddgpage.h"

#include "controls/repolish.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediafilechoice.h"
#include "ui_fileaddgpage.h"

#include <QMouseEvent>

FileAddGPage::FileAddGPage(QWidget *parent)
    : FileDragDropWidget(parent), m_ui(std::make_unique<Ui::FileAddGPage>())
{
    m_ui->setupUi(this);
}

FileAddGPage::~FileAddGPage() = default;

void FileAddGPage::on_btnAddMediaFiles_clicked()
{
    const QStringList files = chooseMediaFiles(this, m_filter);
    if (!files.isEmpty())
        emit filesAddActived(files, FileAddType::AddFile);
}

void FileAddGPage::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton && isInZone(event->pos());
}

void FileAddGPage::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_pressed && event->button() == Qt::LeftButton && isInZone(event->pos()))
        m_ui->btnAddMediaFiles->click();
    m_pressed = false;
}

bool FileAddGPage::isInZone(const QPoint &pos) const
{
    return m_ui->frmDropZone->geometry().contains(pos);
}

void FileAddGPage::showDragOver(bool over)
{
    m_ui->frmDropZone->setProperty("dragOver", over);
    repolish(m_ui->frmDropZone);
}
