// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/lazypage.h"
#include "MediaKits/FunctionPage/ScreenRecord/recordingrun.h"

#include <memory>

namespace Ui {
class ScreencapFuncionPage;
}
class CameraPreviewManager;
class RecordKeys;

/// The page that records the screen: its choices, a clock, and the buttons of a recording.
class ScreencapFuncionPage : public LazyPage
{
    Q_OBJECT

public:
    explicit ScreencapFuncionPage(QWidget *parent = nullptr);
    ~ScreencapFuncionPage() override;

    bool isWorking() const override;
    QString leaveQuestion() const override;
    /// Returns when the recording that runs is saved.
    void finishWork() override;

public slots:
    /// Starts a recording as the button does, or ends the one that runs.
    void startOrStop();
    /// Pauses the recording or goes on with it; nothing without one.
    void pauseOrResume();
    void on_wbnCapStartPause_clicked();
    /// Ends the recording that runs, or what leads to one; never starts one.
    void on_wbnCapStop_clicked();

signals:
    void phaseChanged(RecordingRun::Phase phase);
    /// The clock's time, "hh:mm:ss".
    void clockChanged(const QString &time);
    /// A word that can't wait until the user looks at the page.
    void warned(const QString &text);
    /// Recordings were made of what a crash had left; the page offers them.
    void rescued(const QStringList &files);

protected:
    void build() override;
    void showEvent(QShowEvent *event) override;

private slots:
    void on_rbFull_clicked(bool checked);
    void on_rbArea_clicked(bool checked);
    void on_rbWindow_clicked(bool checked);
    void on_rbCamOn_toggled(bool checked);
    void on_ledtWndID_editingFinished();
    void on_btnOpenPath_clicked();

private:
    void setUpRun();
    void setUpFolder();
    void setUpChoices();
    void holdKeys();

    int mode() const;
    void start();
    void onStateChanged(Screencap::CapStateEnum state);
    void onFinished();
    void onSpaceLow(qint64 bytesLeft);
    void onRepaired(const QStringList &files);
    void tellLater(const QString &title, const QString &text);

    void showPhase();
    void showHints();
    void showRemarks();
    void showTime(uint seconds);

    std::unique_ptr<Ui::ScreencapFuncionPage> m_ui;
    RecordingRun *m_run = nullptr;
    CameraPreviewManager *m_cameras = nullptr;
    bool m_hasLookedForCameras = false;
    RecordKeys *m_keys = nullptr;
    QString m_folderRemark;
    QString m_spaceRemark;
    bool m_isLeaving = false;
};
