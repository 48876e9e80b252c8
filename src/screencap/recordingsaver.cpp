// SPDX-License-Identifier: MIT
#include "screencap/recordingsaver.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "platform/diskspace.h"
#include "platform/openfolder.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTimer>

namespace {

using PieceLength = RecordingSaver::PieceLength;

const QString listFile = QStringLiteral("pieces.txt");
// Below, the end of a piece is given up so that its sound and picture end together; more is missing
// when the sound's device has gone.
constexpr double mostGivenUp = 1.0;
constexpr int reportLines = 20;
// Left on the disk for others.
constexpr qint64 spareBytes = 50 * 1024 * 1024;

// Less than one frame: what ffmpeg writes ahead of the first one, or a part of that.
constexpr qint64 mostHeaderBytes = 4096;
// By which the whole may be shorter than its pieces: a frame at the end of each, and what their
// streams don't begin together.
constexpr double missedInEach = 0.1;
constexpr double missedInAll = 0.5;

// "00:01:02.345000000" as Matroska has it, in seconds.
double secondsOf(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    return parts.size() == 3 ? parts[0].toInt() * 3600 + parts[1].toInt() * 60 + parts[2].toDouble()
                             : 0.0;
}

PieceLength lengthIn(const QJsonObject &probe)
{
    PieceLength length;
    const QJsonArray streams = probe.value(QLatin1String("streams")).toArray();
    for (const QJsonValue stream : streams) {
        const QString kind = stream[QLatin1String("codec_type")].toString();
        const double end =
            secondsOf(stream[QLatin1String("tags")][QLatin1String("DURATION")].toString());
        (kind == QLatin1String("audio") ? length.sound : length.picture) = end;
    }
    return length;
}

double lastTimeIn(const QString &lines)
{
    double last = 0.0;
    for (const QStringRef &line : lines.splitRef(QLatin1Char('\n'), Qt::SkipEmptyParts))
        last = qMax(last, line.toDouble());
    return last;
}

// The sound of one piece begins where that of the one before ends, so that the time of each is its
// number of samples and nothing drifts; a picture that would be longer is cut.
bool endsWithItsSound(const PieceLength &length)
{
    return length.sound > 0.0 && qAbs(length.picture - length.sound) <= mostGivenUp;
}

} // namespace

RecordingSaver::RecordingSaver(std::unique_ptr<RecordingFolder> folder, QObject *parent)
    : QObject(parent), m_folder(std::move(folder))
{
}

RecordingSaver::~RecordingSaver() = default;

void RecordingSaver::start()
{
    m_pieces = m_folder->pieces();
    if (m_pieces.isEmpty()) {
        m_folder->remove();
        QTimer::singleShot(0, this, &RecordingSaver::done);
        return;
    }
    m_unprobed = m_pieces;
    m_pieces.clear();
    probeNext();
}

// For a second copy, without filling the disk.
bool RecordingSaver::hasRoom() const
{
    qint64 bytes = spareBytes;
    for (const QString &piece : m_pieces)
        bytes += QFileInfo(piece).size();
    const qint64 freeBytes = freeDiskSpace(QFileInfo(m_pieces.first()).path());
    return freeBytes < 0 || freeBytes > bytes;
}

void RecordingSaver::probe(const QString &path, const QString &entries,
                           void (RecordingSaver::*then)())
{
    m_probe = std::make_unique<FFProbeProcessor>();
    connect(m_probe.get(), &MediaProcessor::stateChanged, this,
            [this, then](MediaProcessor::State) {
                if (m_probe->isFinal())
                    QTimer::singleShot(0, this, then);
            });
    m_probe->setArguments(
        QStringLiteral("-v error -show_entries %1 %2").arg(entries, quoteToolPath(path)));
    m_probe->start();
}

void RecordingSaver::probeNext()
{
    if (m_unprobed.isEmpty()) {
        onAllProbed();
        return;
    }
    probe(m_unprobed.first(),
          QStringLiteral("stream=codec_type:stream_tags=DURATION:packet=pts_time -read_intervals "
                         "%+#1 -of json"),
          &RecordingSaver::onProbed);
}

// A piece without a frame, whose tool was killed before there was one, plays nowhere, and ffmpeg
// would leave out all that comes behind it.
void RecordingSaver::onProbed()
{
    const QString piece = m_unprobed.takeFirst();
    const QJsonObject found = QJsonDocument::fromJson(m_probe->output().toUtf8()).object();
    const QJsonArray packets = found.value(QLatin1String("packets")).toArray();
    const bool isReadable = !packets.isEmpty();
    if (!isReadable && QFileInfo(piece).size() <= mostHeaderBytes) {
        CLOG(WARNING, "default") << "nothing in " << piece;
        probeNext();
        return;
    }
    m_pieces += piece;
    m_lengths += lengthIn(found);
    // On a busy machine a source opens late.
    m_lengths.last().begin = packets[0][QLatin1String("pts_time")].toString().toDouble();
    m_areAllReadable = m_areAllReadable && isReadable;
    const bool isClosed = m_lengths.last().picture > 0.0 || m_lengths.last().sound > 0.0;
    if (isClosed || !isReadable)
        probeNext();
    else
        probe(piece, QStringLiteral("packet=pts_time -of csv=p=0"), &RecordingSaver::onTimesProbed);
}

// The tool was killed: only its frames tell how long the piece is.
void RecordingSaver::onTimesProbed()
{
    m_lengths.last().picture = lastTimeIn(m_probe->output());
    probeNext();
}

void RecordingSaver::onAllProbed()
{
    if (m_pieces.isEmpty()) {
        m_folder->remove();
        emit done();
    } else if (!m_areAllReadable) {
        m_remark = tr("有片段无法读取");
        keepPieces();
    } else if (!hasRoom()) {
        m_remark = tr("磁盘空间不足");
        keepPieces();
    } else {
        join();
    }
}

QStringList RecordingSaver::listLines()
{
    QStringList lines{QStringLiteral("ffconcat version 1.0")};
    m_seconds = 0.0;
    for (int i = 0; i < m_pieces.size(); ++i) {
        const PieceLength &length = m_lengths[i];
        lines += QStringLiteral("file ") + QFileInfo(m_pieces[i]).fileName();
        // Behind the last one nothing has to fit.
        const bool isCut = i + 1 < m_pieces.size() && endsWithItsSound(length);
        m_seconds += (isCut ? length.sound : qMax(length.picture, length.sound)) - length.begin;
        if (!isCut)
            continue;
        const QString end = QString::number(length.sound, 'f', 6);
        lines += {QStringLiteral("outpoint ") + end, QStringLiteral("duration ") + end};
    }
    return lines;
}

void RecordingSaver::join()
{
    const QString listPath = m_folder->filePath(listFile);
    const OpenFolder folder = OpenFolder::at(QFileInfo(listPath).path());
    QSaveFile list(folder.filePath(listFile));
    if (!list.open(QIODevice::WriteOnly) ||
        list.write(listLines().join(QLatin1Char('\n')).toUtf8() + '\n') < 0 || !list.commit()) {
        m_remark = list.errorString();
        keepPieces();
        return;
    }
    const QString whole = m_folder->filePath(QFileInfo(m_folder->target()).fileName());
    m_join = std::make_unique<FFMpegProcessor>();
    connect(m_join.get(), &MediaProcessor::stateChanged, this, &RecordingSaver::onJoined);
    m_join->setCommand(QStringLiteral("-v warning -f concat -safe 0 -i %1 -map 0 -c copy -y %2")
                           .arg(quoteToolPath(listPath), quoteToolPath(whole)),
                       0, false);
    m_moves = {{whole, m_folder->target()}};
    m_join->start();
}

void RecordingSaver::onJoined(MediaProcessor::State state)
{
    if (!m_join->isFinal())
        return;
    if (state == MediaProcessor::ProcessorFinished) {
        probe(m_moves.first().from, QStringLiteral("format=duration -of csv=p=0"),
              &RecordingSaver::onWholeProbed);
        return;
    }
    m_remark = failureCause(m_join->lastLines(reportLines));
    QTimer::singleShot(0, this, &RecordingSaver::keepPieces);
}

// ffmpeg also ends well when it gave up in the middle; then the pieces are all there is.
void RecordingSaver::onWholeProbed()
{
    const double missed = m_seconds - m_probe->output().trimmed().toDouble();
    if (missed <= missedInAll + missedInEach * m_pieces.size() &&
        QFileInfo(m_moves.first().from).size() > 0) {
        moveNext();
        return;
    }
    m_remark = tr("合并后的录像不完整");
    keepPieces();
}

// Each plays as it is.
void RecordingSaver::keepPieces()
{
    if (!m_moves.isEmpty()) {
        const QFileInfo whole(m_moves.first().from);
        OpenFolder::at(whole.path()).remove(whole.fileName());
    }
    m_moves.clear();
    const QFileInfo target(m_folder->target());
    const QString path =
        target.path() + QLatin1Char('/') + target.completeBaseName() + QStringLiteral(".mkv");
    for (const QString &piece : qAsConst(m_pieces))
        m_moves += {piece, path};
    m_remark = tr("录像未能整理成一个文件（%1），已按原始片段保存").arg(m_remark);
    moveNext();
}

void RecordingSaver::moveNext()
{
    if (m_moves.isEmpty()) {
        m_folder->remove();
        emit done();
        return;
    }
    const Move move = m_moves.takeFirst();
    m_move = std::make_unique<MediaMoveTask>(QStringLiteral("RecordingMove"), QString());
    connect(m_move.get(), &MediaTask::taskCustomeMsgCome, this,
            [this](int, MediaTask *, const QVariant &path) { m_files += path.toString(); });
    connect(m_move.get(), &MediaTask::taskStateChanged, this, [this](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            QTimer::singleShot(0, this, &RecordingSaver::onMoved);
    });
    m_move->setParam(new MediaMoveTaskParam(move.from, move.to));
    m_move->start();
}

void RecordingSaver::onMoved()
{
    if (m_move->state() == MediaTask::FINISHED) {
        moveNext();
        return;
    }
    // What can't be moved now stays for the next start.
    m_remark = m_move->failure().cause;
    emit done();
}
