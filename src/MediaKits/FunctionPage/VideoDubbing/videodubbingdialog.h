// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/FunctionPage/VideoDubbing/musicentry.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"

class DubbingFragmentItemWidget;
class DubbingModeEdit;
class FragmentPane;
class LoudnessScan;
class MixPreview;
class QListWidgetItem;
class QSpinBox;

/// Music and speech over one video: any number of audio files, each with its start and its volume,
/// and one volume for the video's own sound.
class VideoDubbingDialog : public TimeSpanEditor
{
    Q_OBJECT

public:
    explicit VideoDubbingDialog(QWidget *parent = nullptr);
    ~VideoDubbingDialog() override;

    /// The conversion that the dubbing is for. Without it the mix can't be heard ahead.
    void setConversion(const ConvertTaskParam &param);
    void setDuration(int ms) override;

    /// Shows an earlier result: "musics" (list of `MusicEntry`), "videoVolume", "isMax". Its
    /// entries stay as they are.
    void setSettings(const QVariantMap &settings);
    /// The same of what is shown, for opening the dialog again.
    QVariantMap settings() const;
    /// What the conversion is told: a map of its `audioFilters`.
    QVariantMap optionMap() const;

protected:
    bool isChanged() const override;
    bool handleKey(const QKeyEvent &event) override;

private slots:
    void on_btnAddDubbing_clicked();
    void on_btnOk_clicked();

private:
    void setUpList();
    void setUpControls();
    QSpinBox *addVolumeRow(const QString &name, const char *objectName);
    void setUpMix();
    MusicEntry addMusic(const QString &path);
    void setLength(const MusicEntry &music, int ms);
    void showUseless(const MusicEntry &music);
    MusicEntry currentEntry() const;
    DubbingFragmentItemWidget *rowOf(QListWidgetItem *item) const;
    void onCurrentChanged(QListWidgetItem *current, QListWidgetItem *previous);
    void store(const QVariantMap &values);
    void showCurrent();
    void showSpan();
    void showLoudness();
    void onChanged();
    void toggleMix();

    FragmentPane *m_pane;
    QSpinBox *m_audioVolume;
    QSpinBox *m_videoVolume;
    DubbingModeEdit *m_mode;
    LoudnessScan *m_scan;
    MixPreview *m_mix;
    ConvertTaskParam m_conversion;
    QVariantMap m_before; // the option map that was shown first
};
