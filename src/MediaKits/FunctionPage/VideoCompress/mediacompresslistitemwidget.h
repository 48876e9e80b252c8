// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/convertrowwidget.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsparam.h"

/// Item data of this page's rows: `QSharedPointer<CompressSettingsParam>`.
constexpr int CompressSettingsRole = Qt::UserRole + 5;

class LeastRateTrials;

/// One video to compress, which keeps its container where that can be written.
class MediaCompressListItemWidget : public ConvertRowWidget
{
    Q_OBJECT

public:
    /// @param item holds the settings, too
    /// @param trials outlive the row
    MediaCompressListItemWidget(QListWidgetItem *item, LeastRateTrials *trials, QWidget *parent);

    /// Compresses to a share of the source's size, whatever was set before.
    void applyRate(double rate);
    /// Nothing until the source is probed.
    void applySettings(const QSharedPointer<CompressSettingsParam> &settings);

public slots:
    void on_btnCompressSet_clicked();

signals:
    /// The smallest size that can be had is now known for certain.
    void leastMeasured();

protected:
    void connectForm(TaskRowForm &form) override;
    bool acceptsSource(const MediaInfoBase &reader) override;
    void missSource() override;
    void onSourceProbed(const MediaInfoData &info) override;
    void readResult() override;

private:
    QSharedPointer<CompressSettingsParam> settings() const;
    // What the conversion is told; without it the row can't be started, and tells why.
    void setWanted(const QSharedPointer<EncParam> &wanted, const QString &hindrance);
    void showSettings(const CompressSettingsParam &settings, const MediaInfoData &info);
    void measureLeast(const MediaInfoData &info);
    void onMeasured(int kbps);

    LeastRateTrials *const m_trials;
};
