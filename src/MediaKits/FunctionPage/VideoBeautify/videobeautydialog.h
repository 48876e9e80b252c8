// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/editordialog.h"
#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QSharedPointer>

class BeautyPreview;
class FilterItemWidget;
class QDoubleSpinBox;
class QListWidgetItem;
class QSlider;
class QSpinBox;

namespace Ui {
class VideoBeautyDialog;
}

/// Turns, colours, speed and loudness of one video, seen at once in the preview.
class VideoBeautyDialog : public EditorDialog
{
    Q_OBJECT

public:
    explicit VideoBeautyDialog(QWidget *parent = nullptr);
    ~VideoBeautyDialog() override;

    /// Without sound there is no loudness to set.
    void setHasSound(bool hasSound);
    /// Shows an earlier result; null leaves what is shown.
    void setParam(const QSharedPointer<VideoBeautyParam> &param);
    /// The result, once the dialog was accepted: a record of its own.
    QSharedPointer<VideoBeautyParam> param() const { return m_param; }

protected:
    void setVideo(const VEncParam *video) override;
    bool isChanged() const override;

private slots:
    void on_btnRotateCW_clicked();
    void on_btnRotateCCW_clicked();
    void on_btnHFilter_toggled(bool checked);
    void on_btnReset_clicked();
    void on_btnSave_clicked();
    void on_lwdtFilters_currentItemChanged(QListWidgetItem *current, QListWidgetItem *previous);

private:
    void addLooks();
    void pair(QSlider *slider, QSpinBox *box);
    void pair(QSlider *slider, QDoubleSpinBox *box);
    void connectControls();
    void showTab(int id);
    void turn(int quarters);
    /// Sets the six boxes that a look has.
    void showColours(const VideoBeautyParam &look);
    VideoBeautyParam shown() const;
    void preview();
    FilterItemWidget *lookWidget(QListWidgetItem *item) const;

    const std::unique_ptr<Ui::VideoBeautyDialog> m_ui;
    BeautyPreview *m_preview;
    QSharedPointer<VideoBeautyParam> m_param;
    int m_rotate = 0; // quarter turns, positive clockwise
    bool m_previewEnabled = true;
};
