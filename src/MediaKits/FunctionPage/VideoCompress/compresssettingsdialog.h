// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsparam.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

#include <memory>

namespace Ui {
class CompressSettingsDialog;
}

/// Asks how one file is to be compressed: to a size, or with explicit settings.
class CompressSettingsDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit CompressSettingsDialog(QWidget *parent = nullptr);
    ~CompressSettingsDialog() override;

    /// The source, which has a format record. Before `setParam`.
    void setMediaInfo(const MediaInfoData &info);
    /// Shows the settings; "确定" changes this very record.
    void setParam(const QSharedPointer<CompressSettingsParam> &param);
    QSharedPointer<CompressSettingsParam> param() const { return m_param; }

    /// Shows the range of sizes anew after the least one became known.
    void showLeast();

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void on_compressSlider_valueChanged(int value);
    void on_sbSize_valueChanged(double size);
    void on_sbSize_editingFinished();
    void on_btnCancel_clicked();
    void on_btnOK_clicked();

private:
    void fillVideoChoices(const QSharedPointer<VEncParam> &video);
    void fillAudioChoices(const QVector<QSharedPointer<AEncParam>> &audios);
    void showRate(double rate);
    void markRange(bool missed);
    double leastSize() const { return m_sourceSize * m_smallestShare; }
    double chosenRate() const;
    void showEncParam(const EncParam &wanted);
    void fillEncParam(EncParam &wanted) const;

    const std::unique_ptr<Ui::CompressSettingsDialog> m_ui;
    QSharedPointer<CompressSettingsParam> m_param;
    MediaInfoData m_info;
    double m_sourceSize = 0.0; ///< MiB
    double m_smallestShare = 0.0;
    double m_asked = 0.0;  ///< share of the source's size, which may be too small
    bool m_missed = false; ///< what was typed isn't within the range
    bool m_hasAudio = false;
};
