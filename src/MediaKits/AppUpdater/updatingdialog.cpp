// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/updatingdialog.h"

#include "controls/repolish.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "ui_updatingdialog.h"

UpdatingDialog::UpdatingDialog(AppUpdater &updater, const UpdateRecord &record, QWidget *parent)
    : DialogFrame(parent), m_form(std::make_unique<Ui::UpdatingDialog>()), m_updater(updater)
{
    setUpForm(*m_form);
    setTitle(tr("软件升级"));
    showProgress(0, 1);
    m_download = updater.downloadAsked(record);
    if (!m_download) {
        fail(tr("无法下载升级包"));
        return;
    }
    connect(m_download, &MiniDownloadObject::downloadProgress, this, &UpdatingDialog::showProgress);
    connect(m_download, &MiniDownloadObject::downloadFinished, this, &UpdatingDialog::examine);
    connect(m_download, &MiniDownloadObject::downloadError, this,
            [this] { fail(tr("无法下载升级包")); });
}

UpdatingDialog::~UpdatingDialog()
{
    if (m_download)
        m_download->cancel();
}

void UpdatingDialog::showProgress(qlonglong received, qlonglong total)
{
    if (total <= 0)
        return;
    const int percent = int(received * 100 / total);
    m_form->prgDownload->setValue(percent);
    m_form->lblProgress->setText(
        m_form->lblProgress->property("txtFormat").toString().arg(percent));
}

void UpdatingDialog::examine()
{
    m_download.clear();
    m_updater.examine(AppUpdater::askedPackage(), this, [this](const QString &refusal) {
        // The user may have left meanwhile.
        if (isVisible())
            install(refusal);
    });
}

void UpdatingDialog::install(const QString &refusal)
{
    if (!refusal.isEmpty())
        fail(tr("%1，没有安装").arg(refusal));
    else if (m_updater.launchUpdater(AppUpdater::askedPackage()))
        accept();
    else
        fail(tr("无法启动升级程序"));
}

void UpdatingDialog::fail(const QString &text)
{
    m_download.clear();
    setTitle(tr("警告"));
    m_form->prgDownload->hide();
    m_form->lblProgress->setText(text);
    m_form->btnCancel->setText(tr("确定"));
    m_form->btnCancel->setProperty("cls", QStringLiteral("primary"));
    repolish(m_form->btnCancel);
}

void UpdatingDialog::on_btnCancel_clicked()
{
    reject();
}
