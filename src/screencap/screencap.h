// SPDX-License-Identifier: MIT
#pragma once

#include "screencap/capturedevices.h"
#include "screencap/capturepiece.h"
#include "screencap/capturetarget.h"
#include "screencap/recordedsound.h"
#include "screencap/recordingrepair.h"
#include "screencap/sourceconfig.h"
#include "screencap/spacewatch.h"

#include <QVariant>

#include <functional>

class WindowPicture;

/// The recorder of the screen: one for the program, all on the main thread, without any dialog.
///
/// A recording grows in a hidden work folder of the output folder, a piece for each stretch between
/// two pauses, and becomes one plain file in its place when it is stopped. What a crash leaves of
/// one is made into a file by repairLeftRecordings().
class Screencap : public QObject
{
    Q_OBJECT

public:
    enum CapStateEnum {
        CapIdle = 0,
        CapStarted = 2,  ///< the recording tool has been started
        CapRunning = 3,  ///< it runs; again after a pause, see pausedChanged()
        CapPaused = 4,   ///< stays over resume(), see isPaused()
        CapFinished = 6, ///< the file is whole and in its place; followed at once by `CapIdle`
        CapFailed = 7,   ///< nothing has come of it; followed at once by `CapIdle`
    };
    Q_ENUM(CapStateEnum)

    enum CaptureMode { FullMode = 1, AreaMode, WindowMode };
    enum AudioFlag { NoSound = 0, SystemSound = 1, Microphones = 2 };
    enum Definition { StandardDefinition = 0, HighDefinition, SourceDefinition };

    /// Made on first use.
    static Screencap &instance();
    ~Screencap() override;

    void setOutputDir(const QString &dir) { m_outputDir = dir; }
    QString outputDir() const { return m_outputDir; }
    /// Text in front of the time in the file's name.
    void setFilePrefix(const QString &prefix) { m_filePrefix = prefix; }
    /// With its dot.
    void setFileSuffix(const QString &suffix) { m_fileSuffix = suffix; }
    QString outputSuffix() const { return m_fileSuffix; }

    /// @param mode of `CaptureMode`
    /// @param target a QRect in native pixels of the screen, an unsigned window handle, or invalid
    void setCapture(int mode, const QVariant &target);
    int capMode() const { return m_mode; }
    QVariant capTarget() const { return m_target; }
    /// @param flags of `AudioFlag`, together
    void setAudioFlags(int flags) { m_sound.setFlags(flags); }
    int audioFlags() const { return m_sound.flags(); }
    /// @param index of `Definition`
    /// @param size kept, read by nobody
    void setDefinition(int index, const QSize &size);
    int definition() const { return m_definition; }

    /// Path of the present or last recording; once it has been saved, where it really is.
    QString outputPath() const { return m_outputPath; }
    /// All files of the last recording: several where its pieces couldn't be made into one.
    QStringList outputPaths() const { return m_outputPaths; }
    CapStateEnum state() const { return m_state; }
    /// Between pause() and resume().
    bool isPaused() const { return m_isPaused; }
    /// Between stop() and `CapFinished` or `CapFailed`: the file is being made. The state stays
    /// what it was until then.
    bool isSaving() const { return m_isSaving; }
    /// Seconds recorded, without pauses.
    uint elapsedSeconds() const { return m_seconds; }

    /// Why the last recording failed, or why one that was kept ended by itself or isn't all that it
    /// should be: a window was closed, the disk is full, the tool died, a microphone was pulled
    /// out. One line for the user; empty when all went well.
    QString failureReason() const { return m_failureReason; }

    /// Whether screen and system sound can both be recorded.
    static bool sourcesRegistered() { return CaptureDevices::areSourcesRegistered(); }
    /// What a recording with the present settings will miss, as a text for the user; empty for
    /// nothing. For showing before start(), which goes on all the same.
    QString startWarning() const { return CaptureDevices::warning(m_sound.isMissed()); }
    /// How start() shows a startWarning(); without one it is only logged.
    void setWarner(const std::function<void(const QString &)> &warner) { m_warner = warner; }

    /// Pairs of the name that a user knows and the system's own.
    /// @param category 1 sound inputs, 2 sound outputs, 3 pictures; anything else is 1
    static QList<QPair<QString, QString>> listDirectShowDevices(int category)
    {
        return CaptureDevices::list(category);
    }
    /// @param direction 1 inputs, 2 outputs; anything else is 1
    static QStringList listAudioDevices(int direction) { return CaptureDevices::audio(direction); }

    /// Removes all that is told to the screen source.
    static bool clearSourceConfig() { return SourceConfig::clear(); }

    /// How the free space of a folder is found out, in bytes; for tests.
    void setSpaceSource(const std::function<qint64(const QString &)> &freeSpace)
    {
        m_space.setSource(freeSpace);
    }

    /// Asks for the sound devices, if sound is wanted, and keeps the answer until the next
    /// recording is over or cancelPreparation(). Those below do it, too: for calling where a user
    /// may be kept waiting for a moment.
    void askForSound() { m_sound.ask(); }
    /// Wakes the sources of the wanted sound, which may take two seconds; for calling while the
    /// user is made to wait anyway. A start() does it, too.
    void prepare() { m_sound.wake(); }
    /// Undoes prepare() when no start() will follow.
    void cancelPreparation();

    /// Makes files of what recordings have left that were cut off by a crash, one after the other,
    /// and tells them by recordingsRepaired(). Recordings of other running programs are left alone.
    /// Does nothing while it is at it.
    void repairLeftRecordings() { m_repair.start(); }
    bool isRepairing() const { return m_repair.isRunning(); }

public slots:
    /// Does nothing unless the state is `CapIdle`.
    void start();
    void pause();
    void resume();
    /// Ends the recording and saves it. When nothing runs, only tells the listeners a time of 0.
    void stop();

signals:
    void stateChanged(Screencap::CapStateEnum state);
    /// @param seconds recorded, without pauses; 0 once a stop is through
    void elapse(uint seconds);
    void pausedChanged(bool isPaused);
    void savingChanged(bool isSaving);
    /// Once a recording, when the disk gets full; it stops by itself when it is.
    void spaceLow(qint64 bytesLeft);
    /// What repairLeftRecordings() has made, with their paths; not emitted when there was nothing.
    void recordingsRepaired(const QStringList &files);

private:
    Screencap();

    void setState(CapStateEnum state);
    void setSaving(bool isSaving);
    void fail(const QString &reason);
    QString makeFolder();
    void tellWarning();
    CaptureTarget target() const { return {m_mode, m_target}; }
    bool tellSource();
    QString commandText() const;
    bool isRecording() const { return m_piece && m_piece->isRunning(); }
    void launchWhenAwake();
    void launchPiece();
    void endPiece();
    void releasePiece();
    void onPieceEnded();
    void onLostPiece();
    void goOn();
    void waitForTarget();
    void save();
    void onSaved();
    void stopBecause(const QString &reason);
    void scheduleTick();
    void tick();
    void watchSpace();
    void watchTarget();
    void letGo();

    QString m_outputDir;
    QString m_filePrefix;
    QString m_fileSuffix;
    QString m_outputPath;
    QStringList m_outputPaths;
    CapStateEnum m_state = CapIdle;
    QVariant m_target;
    QSize m_definitionSize;
    int m_mode = FullMode;
    int m_definition = StandardDefinition;

    bool m_isPaused = false;
    bool m_isSaving = false;
    QString m_failureReason;
    std::function<void(const QString &)> m_warner;
    SpaceWatch m_space;

    std::unique_ptr<CapturePiece> m_piece;
    int m_emptyInRow = 0; // pieces that ended by themselves with nothing in them
    RecordedSound m_sound;
    QTimer m_wakeTimer;
    std::unique_ptr<WindowPicture> m_windowPicture;
    QTimer m_targetTimer; // while there is nothing to see of what is recorded
    QSize m_canvas;       // size of the film's picture, which that of each piece is fitted into
    QSize m_presentSize;  // of what is recorded, in the present piece

    QTimer m_tickTimer;
    qint64 m_earlierMs = 0; // recorded in the pieces before
    uint m_seconds = 0;

    std::unique_ptr<RecordingFolder> m_folder;
    std::unique_ptr<RecordingSaver> m_saver;
    RecordingRepair m_repair;
};
