// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegprocessor.h"
#include "MediaKits/MediaProcessor/ffprobeprocessor.h"
#include "screencap/recordingfolder.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class MediaMoveTask;

/// Makes one plain file of a recording's pieces, without coding anything again, and moves it to its
/// place under a free name. Where the disk has no room for a second copy, or joining loses some of
/// them, the pieces themselves take that place. The folder goes when nothing is left in it. Serves
/// one run.
class RecordingSaver : public QObject
{
    Q_OBJECT

public:
    explicit RecordingSaver(std::unique_ptr<RecordingFolder> folder, QObject *parent = nullptr);
    ~RecordingSaver() override;

    void start();

    /// Times in a piece in seconds: of its first packet, and at which each kind of stream ends, 0
    /// for none and for what isn't known.
    struct PieceLength
    {
        double begin = 0.0;
        double picture = 0.0;
        double sound = 0.0;
    };

    /// The files that there are now; empty when nothing had been recorded or nothing could be
    /// moved.
    QStringList files() const { return m_files; }
    /// Why something is not as it was asked for, for the user.
    QString remark() const { return m_remark; }

signals:
    /// The saver may be deleted from here on, also in the slot by `deleteLater`.
    void done();

private:
    bool hasRoom() const;
    void probe(const QString &path, const QString &entries, void (RecordingSaver::*then)());
    void probeNext();
    void onProbed();
    void onTimesProbed();
    void onAllProbed();
    QStringList listLines();
    void join();
    void onJoined(MediaProcessor::State state);
    void onWholeProbed();
    void keepPieces();
    void moveNext();
    void onMoved();

    struct Move
    {
        QString from;
        QString to;
    };

    std::unique_ptr<RecordingFolder> m_folder;
    QStringList m_unprobed;
    QStringList m_pieces;           ///< those with something in them
    QVector<PieceLength> m_lengths; ///< of each of `m_pieces`
    bool m_areAllReadable = true;
    double m_seconds = 0.0; ///< that there is something in the pieces, together
    std::unique_ptr<FFProbeProcessor> m_probe;
    std::unique_ptr<FFMpegProcessor> m_join;
    QList<Move> m_moves;
    std::unique_ptr<MediaMoveTask> m_move;
    QStringList m_files;
    QString m_remark;
};
