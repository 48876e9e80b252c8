// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Intake/comtoolbargpage.h"

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediafilechoice.h"
#include "ui_comtoolbargpage.h"

ComToolBarGPage::ComToolBarGPage(QWidget *parent) : QWidget(parent)
{
    Ui::ComToolBarGPage form;
    form.setupUi(this);
    // Not in the form: a text that is set later takes the shortcut away.
    form.btnAddFile->setShortcut(QKeySequence::Open);
}

void ComToolBarGPage::on_btnAddFile_clicked()
{
    const QStringList files = chooseMediaFiles(this, m_filter);
    if (!files.isEmpty())
        emit filesAddActived(files, FileAddType::AddFile);
}

void ComToolBarGPage::on_btnAddDir_clicked()
{
    const QString folder = chooseMediaFolder(this);
    if (!folder.isEmpty())
        emit filesAddActived(mediaFilesIn(folder, m_allowedPatterns), FileAddType::AddFolder);
}

void ComToolBarGPage::on_btnHistory_clicked()
{
    runModal(new HistoryRecordCovertDialog(this));
}

void ComToolBarGPage::on_btnClear_clicked()
{
    emit itemclearActived();
}
