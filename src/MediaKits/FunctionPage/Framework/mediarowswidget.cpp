// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/mediarowswidget.h"

#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/mediaimportdialog.h"
#include "MediaKits/FunctionPage/Framework/mediarowwidget.h"

#include <QApplication>
#include <QDateTime>
#include <QPointer>
#include <QShortcut>

MediaRowsWidget::MediaRowsWidget(QWidget *parent) : QWidget(parent)
{
    auto *shortcut = new QShortcut(QKeySequence(QKeySequence::Delete), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, &MediaRowsWidget::deleteFocusedRow);
}

void MediaRowsWidget::addFiles(const QStringList &files)
{
    const QPointer<MediaRowsWidget> alive(this);
    importFiles(this, files, [alive](const QString &path) {
        if (alive)
            alive->addFile(path);
    });
}

bool MediaRowsWidget::presetIsMissing()
{
    if (!needsPreset() || m_encParamInfoID != 0)
        return false;
    MediaFormatSetTipsDialog(this).exec();
    return true;
}

void MediaRowsWidget::addHistory(const QString &source, const QString &result)
{
    HistoryRecord::instance().add(
        {QDateTime::currentDateTime().toString(QStringLiteral("yyyy.MM.dd hh:mm")), source,
         result});
}

void MediaRowsWidget::deleteFocusedRow()
{
    for (QWidget *widget = QApplication::focusWidget(); widget && widget != this;
         widget = widget->parentWidget()) {
        if (auto *row = qobject_cast<MediaRowWidget *>(widget)) {
            row->on_btnDel_clicked();
            return;
        }
    }
}
