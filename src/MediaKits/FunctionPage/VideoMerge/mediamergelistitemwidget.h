// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/MediaTasksManager/concattask.h"

#include <QPointer>

class MergeRowForm;

/// Data of the items of the merge list, besides what all rows have.
enum MergeItemRole {
    MergeInputRole = Qt::UserRole + 2, ///< `QSharedPointer<InputFileMediaParam>`
    MergeTaskRole = Qt::UserRole + 10, ///< `QSharedPointer<MediaTask>`, the list's only one
};

/// One input of a merge.
class MediaMergeListItemWidget : public MediaRowWidget
{
    Q_OBJECT

public:
    enum ItemOperate { MoveUp = 0, MoveDown = 1 };
    Q_ENUM(ItemOperate)
    enum Position { OnlyPosition, FirstPosition, LastPosition, MiddlePosition };

    /// @param item holds path, input and task already
    MediaMergeListItemWidget(QListWidgetItem *item, QWidget *parent);

    /// Where the row stands in the list, which decides what it can be moved to.
    void setPosition(int position);
    /// Shows what the input is cut and cropped to.
    void showSelection();
    static QSharedPointer<InputFileMediaParam> inputOf(const RowItem &item);
    /// The button that moves the row, while it is in sight and can be moved that way; null
    /// otherwise.
    QWidget *moveButton(ItemOperate operate) const;

public slots:
    void on_btnDel_clicked() override;
    void on_btnUp_clicked();
    void on_btnDown_clicked();
    void on_btnCutSettting_clicked();

signals:
    /// The user wants the row away.
    void itemDeleted();
    void itemOperateActive(QListWidgetItem *item, MediaMergeListItemWidget::ItemOperate operate);
    /// What is taken of the input has changed, or become known.
    void selectionChanged();

protected:
    RowForm *createForm() override;
    MediaTask *usingTask() const override;
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;
    void onSourceProbed(const MediaInfoData &info) override;

private:
    void watchTask();

    int m_position = OnlyPosition;
    QPointer<MergeRowForm> m_form;
};
