// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QSize>
#include <QWidget>

#include <memory>

class ChopMaskAdapter;
class QRect;

namespace Ui {
class CropEdit;
}

/// The fields of the box that is kept of a picture, in the picture's pixels, kept together with the
/// frame over the preview. Their limits keep the box inside the picture.
class CropEdit : public QWidget
{
    Q_OBJECT

public:
    /// @param mask outlives the widget or has the same parent
    CropEdit(ChopMaskAdapter *mask, QWidget *parent);
    ~CropEdit() override;

    /// The whole picture becomes the box.
    /// @param pixelAspect width of a pixel by its height
    void setPicture(const QSize &size, double pixelAspect);
    /// Shows an earlier result; null leaves what is shown.
    void setCrop(const QSharedPointer<CropBox> &crop);
    /// The box as a result: null when it is the whole picture, or when there is none.
    QSharedPointer<CropBox> crop() const;

private:
    void connectFields();
    void showRect(const QRect &rect);

    const std::unique_ptr<Ui::CropEdit> m_ui;
    ChopMaskAdapter *const m_mask;
    QSize m_videoSize;
};
