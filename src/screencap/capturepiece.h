// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegprocessor.h"

#include <QElapsedTimer>
#include <QSize>
#include <QTimer>

/// One run of ffmpeg that records a piece. The piece begins half a second after the launch, when
/// all sources are open. Serves one run.
class CapturePiece : public QObject
{
    Q_OBJECT

public:
    explicit CapturePiece(QObject *parent = nullptr);

    /// @param path of the piece's file
    /// @param canvas size of its picture, whatever the source's
    void start(const QString &command, const QString &path, const QSize &canvas);
    /// Ends the piece in order, and not before there is something in it. Several calls are one.
    void end();

    /// False after ended().
    bool isRunning() const { return !m_processor.isFinal(); }
    bool isEndAsked() const { return m_isEndAsked; }
    /// Since the piece's beginning; below 0 before it.
    qint64 elapsedMs() const;
    qint64 recordedMs() const { return qMax<qint64>(0, elapsedMs()); }
    /// Whether it has ended, unasked, because one of its sources had.
    bool hasLostSource() const { return m_processor.state() == MediaProcessor::ProcessorFinished; }
    /// Why it ended when it wasn't asked to, for the user.
    QString lossReason() const;

signals:
    void running();
    /// From the event loop, so that the piece may be deleted.
    void ended();

private:
    void onState(MediaProcessor::State state);
    void onEndTimer();

    FFMpegProcessor m_processor;
    QString m_path;
    QElapsedTimer m_clock; // since the launch
    bool m_isEndAsked = false;
    bool m_isQuitSent = false;
    QTimer m_endTimer; // until ffmpeg may be told to end, and then has to have ended
};
