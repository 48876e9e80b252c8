// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/updatedialog.h"

#include "controls/runmodal.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/updatingdialog.h"
#include "ui_updatedialog.h"

UpdateDialog::UpdateDialog(AppUpdater &updater, const UpdateRecord &record,
                           const std::function<bool()> &mayLeave, QWidget *parent)
    : DialogFrame(parent),
      m_form(std::make_unique<Ui::UpdateDialog>()),
      m_updater(updater),
      m_record(record),
      m_mayLeave(mayLeave)
{
    setUpForm(*m_form);
    setTitle(tr("软件升级"));
    m_form->lblHeading->setText(record.title.isEmpty() ? tr("发现新版本") : record.title);
    m_form->edtTip->setPlainText(record.tip);
    m_form->lblHint->hide();
    m_form->btnUpdate->setFocus();
    if (!updater.settings().isReplaceable())
        forbidInstalling();
}

UpdateDialog::~UpdateDialog() = default;

void UpdateDialog::forbidInstalling()
{
    m_form->lblHint->show();
    m_form->btnUpdate->hide();
    m_form->btnNoUpdate->setText(tr("知道了"));
    m_form->btnNoUpdate->setDefault(true);
    m_form->btnNoUpdate->setFocus();
}

void UpdateDialog::on_btnNoUpdate_clicked()
{
    reject();
}

void UpdateDialog::on_btnUpdate_clicked()
{
    reject();
    hide();
    if (!m_mayLeave())
        return;
    const QPointer<UpdateDialog> dialog = this;
    const bool isInstalling = runModal(new UpdatingDialog(m_updater, m_record, parentWidget()));
    if (dialog)
        m_isInstalling = isInstalling;
}
