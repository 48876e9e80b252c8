// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

class CSVideoPlayer;
class InterceptSlider;

namespace Ui {
class EditorDialog;
}

/// Base of the editors: a running preview with play button, time line, volume, and below it the
/// place for what is edited. Modal, for one `exec`; results are read when it was accepted. All
/// times are ms.
///
/// Space plays and pauses, the arrow keys step a second, with Shift one frame.
class EditorDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit EditorDialog(QWidget *parent = nullptr);
    ~EditorDialog() override;

    /// The length of the medium.
    virtual void setDuration(int ms);
    int duration() const { return m_duration; }

protected:
    /// Starts the preview with these options of the player.
    void startPlayer(const QString &file, const QStringList &args);
    CSVideoPlayer &player() const;
    InterceptSlider &scrubBar() const;
    /// Where the subclass lays out its controls.
    QWidget *editorArea() const;
    /// Last position that the player told.
    int position() const { return m_position; }
    /// Seconds of one frame, for steps by the keyboard.
    void setFrameRate(double framesPerSecond);

    void keyPressEvent(QKeyEvent *event) override;

protected slots:
    void on_btnPlay_toggled(bool checked);
    void on_btnVolume_clicked();
    void on_btnCancel_clicked();
    /// Takes the result and accepts.
    virtual void on_btnSave_clicked() = 0;

private:
    void connectPlayer();
    void step(int ms);

    const std::unique_ptr<Ui::EditorDialog> m_ui;
    int m_duration = 0;
    int m_position = 0;
    int m_frameMs;
};
