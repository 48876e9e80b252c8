// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowsview.h"

#include "controls/runmodal.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediaimportdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowsight.h"

#include <QDateTime>
#include <QPointer>
#include <QShortcut>

RowsView::RowsView(QWidget *parent) : QWidget(parent)
{
    auto *shortcut = new QShortcut(QKeySequence(QKeySequence::Delete), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, &RowsView::deleteFocusedRow);
}

void RowsView::addFiles(const QStringList &files)
{
    const QPointer<RowsView> alive(this);
    importFiles(this, files, [alive](const QString &path) {
        if (alive)
            alive->addFile(path);
    });
}

bool RowsView::presetIsMissing()
{
    if (!needsPreset() || m_encParamInfoID != 0)
        return false;
    runModal(new MediaFormatSetTipsDialog(this));
    return true;
}

void RowsView::addHistory(const QString &source, const QString &result)
{
    HistoryRecord::instance().add(
        {QDateTime::currentDateTime().toString(QStringLiteral("yyyy.MM.dd hh:mm")), source,
         result});
}

void RowsView::deleteFocusedRow()
{
    if (MediaRowWidget *row = RowSight::focusedRow())
        row->on_btnDel_clicked();
}
