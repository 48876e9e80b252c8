// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mediamergefinishtipsdialog.h"

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "ui_mediamergefinishtipsdialog.h"

MediaMergeFinishTipsDialog::MediaMergeFinishTipsDialog(const QString &path,
                                                       const TaskRemarks &remarks, QWidget *parent)
    : DialogFrame(parent), m_path(path), m_remarks(remarks)
{
    Ui::MediaMergeFinishTipsDialog form;
    setUpForm(form);
    form.lblRemarks->setText(remarks.texts.join(QLatin1Char('\n')));
    form.lblRemarks->setHidden(remarks.isEmpty());
    form.btnDetails->setHidden(remarks.isEmpty());
    setTitle(tr("提示"));
}

void MediaMergeFinishTipsDialog::on_btnOpen_clicked()
{
    revealInFileManager(m_path);
    accept();
}

void MediaMergeFinishTipsDialog::on_btnCancel_clicked()
{
    reject();
}

void MediaMergeFinishTipsDialog::on_btnDetails_clicked()
{
    runModal(new FailureDetailsDialog(m_remarks, this));
}
