// SPDX-License-Identifier: MIT
#include "screencap/recordingsaver.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "platform/diskspace.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTimer>

namespace {

const QString listFile = QStringLiteral("pieces.txt");
// Below, the end of a piece is given up so that its sound and picture end together; more is missing
// when the sound's device has gone.
constexpr double mostGivenUp = 1.0;
constexpr int reportLines = 20;
// Left on the disk for others.
constexpr qint64 spareBytes = 50 * 1024 * 1024;

// "00:01:02.345000000" as Matroska has it, in seconds.
double secondsOf(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    return parts.size() == 3 ? parts[0].toInt() * 3600 + parts[1].toInt() * 60 + parts[2].toDouble()
                             : 0.0;
}

// Seconds that each kind of stream of a piece lasts, 0 for none.
struct PieceLength
{
    double picture = 0.0;
    double sound = 0.0;
};

PieceLength lengthIn(const QString &probe)
{
    PieceLength length;
    const QJsonObject root = QJsonDocument::fromJson(probe.toUtf8()).object();
    const QJsonArray streams = root.value(QLatin1String("streams")).toArray();
    for (const QJsonValue stream : streams) {
        const QString kind = stream[QLatin1String("codec_type")].toString();
        const double end =
            secondsOf(stream[QLatin1String("tags")][QLatin1String("DURATION")].toString());
        (kind == QLatin1String("audio") ? length.sound : length.picture) = end;
    }
    return length;
}

// The sound of one piece begins where that of the one before ends, so that the time of each is its
// number of samples and nothing drifts; a picture that would be longer is cut.
QStringList directives(const PieceLength &length)
{
    if (length.sound <= 0.0 || qAbs(length.picture - length.sound) > mostGivenUp)
        return {};
    const QString end = QString::number(length.sound, 'f', 6);
    return {QStringLiteral("outpoint ") + end, QStringLiteral("duration ") + end};
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
    if (!hasRoom()) {
        m_remark = tr("磁盘空间不足");
        keepPieces();
        return;
    }
    m_list += QStringLiteral("ffconcat version 1.0");
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

void RecordingSaver::probeNext()
{
    m_list += QStringLiteral("file ") + QFileInfo(m_pieces[m_probed]).fileName();
    // Behind the last one nothing has to fit.
    if (m_probed + 1 == m_pieces.size()) {
        join();
        return;
    }
    m_probe = std::make_unique<FFProbeProcessor>();
    connect(m_probe.get(), &MediaProcessor::stateChanged, this, [this](MediaProcessor::State) {
        if (m_probe->isFinal())
            QTimer::singleShot(0, this, &RecordingSaver::onProbed);
    });
    m_probe->setArguments(QStringLiteral("-v error -show_entries stream=codec_type:stream_tags="
                                         "DURATION -of json %1")
                              .arg(quoteToolPath(m_pieces[m_probed])));
    m_probe->start();
}

void RecordingSaver::onProbed()
{
    m_list += directives(lengthIn(m_probe->output()));
    ++m_probed;
    probeNext();
}

void RecordingSaver::join()
{
    const QString listPath = m_folder->filePath(listFile);
    QSaveFile list(listPath);
    if (!list.open(QIODevice::WriteOnly) ||
        list.write(m_list.join(QLatin1Char('\n')).toUtf8() + '\n') < 0 || !list.commit()) {
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
    if (state == MediaProcessor::ProcessorFinished && QFileInfo(m_moves.first().from).size() > 0) {
        QTimer::singleShot(0, this, &RecordingSaver::moveNext);
        return;
    }
    m_remark = failureCause(m_join->lastLines(reportLines));
    QTimer::singleShot(0, this, &RecordingSaver::keepPieces);
}

// Each plays as it is.
void RecordingSaver::keepPieces()
{
    if (!m_moves.isEmpty())
        QFile::remove(m_moves.first().from);
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
