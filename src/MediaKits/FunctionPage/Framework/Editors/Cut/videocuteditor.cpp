// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocuteditor.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/cropedit.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QLabel>

VideoCutEditor::VideoCutEditor(const QString &title, QWidget *parent)
    : TimeSpanEditor(parent),
      m_mask(new ChopMaskAdapter(player().videoLabel(), this)),
      m_crop(new CropEdit(m_mask, this))
{
    setTitle(title);
    addSection(m_crop);
    connect(m_crop, &CropEdit::remarked, this, &VideoCutEditor::showHint);
}

void VideoCutEditor::setPicture(const QSize &size, double pixelAspect)
{
    TimeSpanEditor::setPicture(size, pixelAspect);
    m_crop->setPicture(size, pixelAspect);
}

void VideoCutEditor::setCropEnabled(bool enabled)
{
    m_mask->setMaskEnabled(enabled);
    m_crop->setEnabled(enabled);
}

void VideoCutEditor::setVideo(const VEncParam *video)
{
    if (!video)
        setCropEnabled(false);
    TimeSpanEditor::setVideo(video);
}
