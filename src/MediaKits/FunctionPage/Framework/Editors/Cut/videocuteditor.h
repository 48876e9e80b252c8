// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/MediaTasksManager/mediaselection.h"

class ChopMaskAdapter;
class CropEdit;

/// Base of the dialogs that mark what is kept of a video: a span of its time and a box of its
/// picture, the box also by a frame over the preview.
class VideoCutEditor : public TimeSpanEditor
{
    Q_OBJECT

public:
    /// @param title of the window
    VideoCutEditor(const QString &title, QWidget *parent);

    void setPicture(const QSize &size, double pixelAspect) override;
    /// Whether there is a picture to crop.
    void setCropEnabled(bool enabled);

protected:
    CropEdit &crop() const { return *m_crop; }

    void setVideo(const VEncParam *video) override;

private:
    ChopMaskAdapter *m_mask;
    CropEdit *m_crop;
};
