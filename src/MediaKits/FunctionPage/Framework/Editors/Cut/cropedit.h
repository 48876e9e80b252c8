// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QRect>
#include <QSize>
#include <QWidget>

#include <memory>

class ChopMaskAdapter;
class QSpinBox;

namespace Ui {
class CropEdit;
}

/// The fields of the box that is kept of a picture, in the picture's pixels, kept together with the
/// frame over the preview. The box always lies inside the picture: its place makes room for a
/// larger size, its size for another place.
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

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// What had to differ from what was asked for, in words for the user; empty for nothing.
    void remarked(const QString &remark);

private:
    void connectFields();
    void edit(QSpinBox *field);
    void endEdit(QSpinBox *field);
    QRect boxWith(const QSpinBox *field) const;
    QString remarkOn(const QSpinBox *field, int asked) const;
    int shownIn(const QSpinBox *field) const;
    void showRect(const QRect &rect);
    void showBox(const QSpinBox *typed);

    const std::unique_ptr<Ui::CropEdit> m_ui;
    ChopMaskAdapter *const m_mask;
    QSize m_videoSize;
    QRect m_box;
    QRect m_before;                    // from before the typing began
    const QSpinBox *m_typed = nullptr; // that is being typed into
};
