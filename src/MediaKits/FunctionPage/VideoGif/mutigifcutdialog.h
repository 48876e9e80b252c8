// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/FunctionPage/VideoGif/gifcutfragment.h"

#include <QList>

class FragmentPane;
class GifSample;
class GifSizeEdit;

/// Marks any number of fragments of one video, each to become a GIF of its own.
class MutiGifCutDialog : public TimeSpanEditor
{
    Q_OBJECT

public:
    explicit MutiGifCutDialog(QWidget *parent = nullptr);

    void setPicture(const QSize &size, double pixelAspect) override;
    void setDuration(int ms) override;
    /// What else the estimate of the size in bytes goes by.
    /// @param info null when the source is known by its preview alone
    void setConversion(const QSharedPointer<MediaInfoData> &info, GifPalette palette);

    /// The result, once the dialog was accepted, in the order of the list.
    QList<QSharedPointer<GifCutFragment>> fragments() const { return m_fragments; }

protected:
    void setVideo(const VEncParam *video) override;
    bool isChanged() const override;

private slots:
    void on_btnFragmentAdd_clicked();
    void on_btnOk_clicked();

private:
    QSharedPointer<GifCutFragment> marked() const;
    void estimate();

    FragmentPane *m_pane;
    GifSizeEdit *m_size;
    GifSample *m_sample;
    QSharedPointer<MediaInfoData> m_info;
    GifPalette m_palette = GifPalette::Fixed;
    QList<QSharedPointer<GifCutFragment>> m_fragments;
};
