// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Intake/mediaimportdialog.h"

#include "MediaKits/Player/thumbnail.h"
#include "ui_mediaimportdialog.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>
#include <QTimer>

MediaImportDialog::MediaImportDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::MediaImportDialog>())
{
    setUpForm(*m_ui);
    setTitle(tr("正在导入"));
    setModal(true);
}

MediaImportDialog::~MediaImportDialog() = default;

void MediaImportDialog::start(const QStringList &files, const PerFile &perFile)
{
    m_files = files;
    m_perFile = perFile;
    m_next = 0;
    m_cancelled = false;
    m_ui->prgImport->setRange(0, files.size());
    m_ui->prgImport->setValue(0);
    // Shown off screen, the dialog already bars the other windows.
    setAttribute(Qt::WA_DontShowOnScreen);
    show();
    QTimer::singleShot(quietTime, this, &MediaImportDialog::reveal);
    QTimer::singleShot(0, this, &MediaImportDialog::importNext);
}

void MediaImportDialog::importNext()
{
    if (m_cancelled) {
        DialogFrame::reject();
        return;
    }
    if (m_next == m_files.size()) {
        accept();
        return;
    }
    const QString file = m_files.at(m_next++);
    m_ui->lblFile->setFullText(QFileInfo(file).fileName());
    m_ui->prgImport->setValue(m_next);
    const QPointer<MediaImportDialog> self(this);
    const PerFile perFile = m_perFile;
    perFile(file);
    if (self)
        QTimer::singleShot(0, this, &MediaImportDialog::importNext);
}

void MediaImportDialog::reveal()
{
    if (!isVisible() || m_cancelled)
        return;
    hide();
    setAttribute(Qt::WA_DontShowOnScreen, false);
    show();
}

void MediaImportDialog::reject()
{
    m_cancelled = true;
}

void MediaImportDialog::on_btnCancel_clicked()
{
    m_cancelled = true;
}

void importFiles(QWidget *dialogParent, const QStringList &files, const PerFile &perFile)
{
    if (files.isEmpty())
        return;
    const ThumbnailBreak thumbnailsWait;
    const QPointer<MediaImportDialog> dialog = new MediaImportDialog(dialogParent);
    QEventLoop loop;
    QObject::connect(dialog.data(), &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(dialog.data(), &QObject::destroyed, &loop, &QEventLoop::quit);
    dialog->start(files, perFile);
    loop.exec();
    delete dialog.data();
}
