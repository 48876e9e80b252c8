// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/FunctionPage/VideoWatermark/markhistory.h"
#include "MediaKits/FunctionPage/VideoWatermark/markplacing.h"
#include "MediaKits/FunctionPage/VideoWatermark/watermarkpreview.h"

class FragmentPane;
class MarkSet;
class WatermarkMaskAdapter;

namespace Ui {
class VideoWatermarkDialog;
}

/// Puts texts, pictures and removals onto one video, by hand on the running picture.
///
/// With a mark chosen the arrow keys move it by one pixel of the picture, with Shift by ten, and
/// with Ctrl change its size. Del removes it, Ctrl+C and Ctrl+V copy it, Ctrl+Z takes back one of
/// the last ten steps.
class VideoWatermarkDialog : public TimeSpanEditor
{
    Q_OBJECT

public:
    explicit VideoWatermarkDialog(QWidget *parent = nullptr);
    ~VideoWatermarkDialog() override;

    /// Shows an earlier result, which stays as it is; once the medium is shown.
    void setMarks(const QVariantList &marks);
    /// The result as shared maps, in the list's order.
    QVariantList marks() const;
    /// The same as plain maps.
    QVariantList plainList() const;

    void setDuration(int ms) override;
    void setPicture(const QSize &size, double pixelAspect) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void setVideo(const VEncParam *video) override;
    bool isChanged() const override;
    bool handleKey(const QKeyEvent &event) override;

private slots:
    void on_btnAddTextWM_clicked();
    void on_btnAddImageWM_clicked();
    void on_btnAddDelogo_clicked();
    void on_btnTemplate_clicked();
    void on_btnPreview_toggled(bool checked);
    void on_sudokuButtons_placeClicked(int place);
    void on_btnOk_clicked();

private:
    void setUpPanes();
    void connectControls();
    void addMark(QVariantMap map);
    void editText();
    void showInPlayer();
    void showPanel();
    /// Takes the preview to where the current mark is seen.
    void goToMark();
    void applyTime();
    void applyOpacity(int percent);
    bool handleMarkKey(const QKeyEvent &event);
    void undo();
    void useTemplate(const QString &name);
    void saveAsTemplate();

    const std::unique_ptr<Ui::VideoWatermarkDialog> m_ui;
    WatermarkMaskAdapter *m_mask;
    FragmentPane *m_pane;
    MarkSet *m_marks;
    QPushButton *m_previewButton;
    MarkHistory m_history;
    WatermarkPreview m_preview;
    QVariantList m_before; // what was shown at first
    MarkedPicture m_picture;
};
