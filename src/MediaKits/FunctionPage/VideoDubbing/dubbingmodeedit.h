// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoDubbing/mixpreview.h"

#include <QWidget>

#include <memory>
#include <optional>

class QProgressBar;

namespace Ui {
class DubbingModeEdit;
}

/// The section that tells what becomes of the video's own sound: the choice, how loud both sounds
/// are beside each other, and the button that lets the mix be heard.
class DubbingModeEdit : public QWidget
{
    Q_OBJECT

public:
    /// One of the two sounds that are compared.
    struct Sound
    {
        bool isThere = false; ///< there is a file at all
        bool isKnown = false; ///< it has been measured
        /// LUFS without the factor; nothing for a file without sound.
        std::optional<double> loudness;
        float factor = 1.0F;
    };

    explicit DubbingModeEdit(QWidget *parent = nullptr);
    ~DubbingModeEdit() override;

    /// Whether the video's own sound stays.
    bool isMixed() const;
    void setMixed(bool mixed);

    void showVideo(const Sound &sound);
    void showMusic(const Sound &sound);
    void showMixState(MixPreview::State state);
    void setMixEnabled(bool enabled);

signals:
    void modeChanged();
    /// The mix is to be heard, or no longer.
    void mixToggled();

private:
    static void showSound(QProgressBar *bar, const Sound &sound);

    const std::unique_ptr<Ui::DubbingModeEdit> m_ui;
};
