// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mediamergefinishtipsdialog.h"

#include "MediaKits/MediaFormats/revealfile.h"
#include "ui_mediamergefinishtipsdialog.h"

MediaMergeFinishTipsDialog::MediaMergeFinishTipsDialog(const QString &path, const QString &remarks,
                                                       QWidget *parent)
    : DialogFrame(parent), m_path(path)
{
    Ui::MediaMergeFinishTipsDialog form;
    setUpForm(form);
    form.lblRemarks->setText(remarks);
    form.lblRemarks->setHidden(remarks.isEmpty());
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
