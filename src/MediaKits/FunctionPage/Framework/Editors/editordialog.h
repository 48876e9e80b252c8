// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <QSize>

#include <memory>

class CSVideoPlayer;
class InterceptSlider;
class QBoxLayout;
class QCheckBox;
class QPushButton;
struct MediaInfoData;
struct VEncParam;

namespace Ui {
class EditorDialog;
}

/// Base of the editors: a running preview with play button, time line, volume, and below it the
/// place for what is edited. Modal, for one `exec`; results are read when it was accepted. All
/// times are ms.
///
/// Space plays and pauses, the arrow keys step a second, with Shift one frame. Escape asks before
/// anything is lost.
class EditorDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit EditorDialog(QWidget *parent = nullptr);
    ~EditorDialog() override;

    /// Opens a file that was probed: preview, picture, frame rate and length.
    void showMedium(const QString &file, const MediaInfoData &info);

    /// Starts the preview.
    /// @param extraArgs options of the player, behind those that every preview has
    void load(const QString &file, const QStringList &extraArgs);
    /// The size of the picture in its own pixels, turned as the preview shows it.
    void setVideoSize(const QSize &size) { setPicture(size, 1.0); }
    /// @param pixelAspect width of a pixel by its height, which the preview keeps
    virtual void setPicture(const QSize &size, double pixelAspect);
    /// The length of the medium.
    virtual void setDuration(int ms);
    int duration() const { return m_duration; }
    /// Frames a second, for steps by the keyboard.
    void setFrameRate(double framesPerSecond);
    /// Whether the user wants the result for all rows of the page.
    bool isForAll() const;

signals:
    /// The preview stands there now, in ms; by playing it comes in whole seconds.
    void positionChanged(int ms);

protected:
    /// Starts the preview with these options of the player alone.
    void startPlayer(const QString &file, const QStringList &args);
    /// Takes the picture that a probe has found.
    /// @param video null when the medium has none
    virtual void setVideo(const VEncParam *video);
    CSVideoPlayer &player() const;
    InterceptSlider &scrubBar() const;
    /// Jumps there; the preview shows that frame.
    void seek(int ms);
    /// Plays or pauses the preview, as its button does.
    void setPlaying(bool playing);
    /// Where the preview stands.
    int position() const { return m_position; }
    /// Lets positions be those of frames: what is seen at one is the first frame from there on,
    /// which is what ffmpeg takes of a film from there on. For constructors.
    void countFrames();
    /// Whether the preview was just paused and has yet to tell which frame it stands at;
    /// `positionChanged` tells it.
    bool isSettling() const;
    /// The length of a frame.
    int frameMs() const { return m_frameMs; }
    /// Tells at the foot why something isn't as it was asked for; empty for nothing.
    void showHint(const QString &hint);

    /// Where the subclass lays out its controls, below the preview. Scrolled in a small window.
    QWidget *editorArea() const;
    /// Lets the parts of a layout in there stand one below the other where the width is too small.
    void setColumns(QBoxLayout *columns);
    /// The button that takes the result, "btnSave" unless it is named otherwise.
    QPushButton *confirmButton() const;
    /// Adds a row of buttons between the preview's controls and the editor's.
    void addButtonRow(QWidget *row);
    /// Offers to take the result for all rows of the page.
    void offerForAll();
    /// Adds a column at the right of the preview.
    /// @param action stands at the column's foot, pointing to it; null for none
    void setSidePane(QWidget *pane, QPushButton *action = nullptr);

    /// Whether leaving the editor would lose something.
    virtual bool isChanged() const = 0;
    /// The editor's keys, wherever the focus is; true when it was one of them.
    virtual bool handleKey(const QKeyEvent &event);

    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected slots:
    void on_btnPlay_toggled(bool checked);
    void on_btnVolume_clicked();
    void on_btnCancel_clicked();

private:
    void connectPlayer();
    void setUpFocus();
    bool correctsTyped();
    void onProgress(int ms);
    void showLength(int ms);
    void showPosition();
    bool mayLeave();

    const std::unique_ptr<Ui::EditorDialog> m_ui;
    int m_duration = 0;
    int m_position = 0;
    QCheckBox *m_forAll = nullptr;
    bool m_standsAtSought = false; // paused, and sent to the position since
    int m_frameMs;
    int m_leadMs = 0; // by which the preview is sent further than the position
};
