// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/Framework/Tree/itemoperation.h"

/// Base of the rows of source files, each above those of its fragments. They have no task. The
/// subclass's constructor starts the probe.
class SourceRowWidget : public MediaRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the path already
    /// @param name object name of the row's surface
    SourceRowWidget(QTreeWidgetItem *item, QLatin1String name, QWidget *parent);

    void setFragmentCount(int count);

signals:
    void itemOperationActived(QTreeWidgetItem *item, ItemOperation operation);

public slots:
    void on_btnDel_clicked() override;
    void on_btnAddItem_clicked();

protected:
    RowForm *createForm() override;
    bool acceptsSource(const MediaInfoBase &reader) override;
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;
    void onSourceProbed(const MediaInfoData &info) override;
    void missSource() override;

private:
    const QLatin1String m_name;
};
