// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"

/// Base of the rows whose task is a conversion.
class ConvertRowWidget : public TaskRowWidget
{
    Q_OBJECT

public:
    /// Names the result after the source unless it has a name.
    ConvertRowWidget(const RowItem &item, const Kind &kind, QWidget *parent);

    QString outputPath() const override;
    void setOutputDir(const QString &dir) override;

protected:
    /// The parameter of the row's task.
    ConvertTaskParam &param() const;
    /// Tells how long the result will be, after its time was cut or its speed was changed.
    void showLength();

    QString outputName() const override;
    void setOutputName(const QString &name) override;
    QString outputFormat() const override;
    void onResultMoved(const QString &path) override;
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;
};
