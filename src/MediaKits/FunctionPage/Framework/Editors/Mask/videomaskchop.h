// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The frame around what is kept of a picture, with handles at its corners and sides.
class VideoMaskChop : public QWidget
{
    Q_OBJECT

public:
    explicit VideoMaskChop(QWidget *parent = nullptr);

    void setHandlesVisible(bool visible);
    bool areHandlesVisible() const { return m_handlesVisible; }
    /// What is drawn in a frame of the widget's size, with room for the grips.
    QRegion drawnRegion() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_handlesVisible = true;
};
