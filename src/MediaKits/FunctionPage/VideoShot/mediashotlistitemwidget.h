// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"

#include <QStringList>

/// One video to take pictures of.
class MediaShotListItemWidget : public TaskRowWidget
{
    Q_OBJECT

public:
    MediaShotListItemWidget(QListWidgetItem *item, QWidget *parent);

    QString outputPath() const override;
    void setOutputDir(const QString &dir) override;

public slots:
    void on_btnShotSet_clicked();

protected:
    QString outputName() const override;
    void setOutputName(const QString &name) override;
    QString outputFormat() const override;
    void onResultMoved(const QString &path) override;
    void readResult() override;
    void keepSource(const QSharedPointer<MediaInfoData> &info) override;
    void onSourceProbed(const MediaInfoData &info) override;
    bool editorAllowed() const override;

private:
    QVariantMap &map() const;
    QString text(const char *key) const;
    void applyOptions(const QVariantMap &options);
    void clearResults();
    void showOptions();

    QStringList m_results; // of the present run
};
