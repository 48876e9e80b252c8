// SPDX-License-Identifier: MIT
#include "screencap/recordingfolder.h"

#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "platform/openfolder.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>
#include <QSet>

namespace {

// Holds the path that the finished file is to have.
const QString targetFile = QStringLiteral("target");
const QString pieceEnding = QStringLiteral(".mkv");
// A folder that is just being made isn't claimed for a moment, and has no target yet.
constexpr int makingSeconds = 10;

// What this process has open: its own claims don't keep itself out.
QSet<QString> &openFolders()
{
    static QSet<QString> paths;
    return paths;
}

bool isBeingMade(const QString &path)
{
    return !QFileInfo::exists(path + QLatin1Char('/') + targetFile) &&
           QFileInfo(path).lastModified().secsTo(QDateTime::currentDateTime()) < makingSeconds;
}

} // namespace

RecordingFolder::RecordingFolder(const QString &path) : m_path(path)
{
    openFolders().insert(m_path);
}

std::unique_ptr<RecordingFolder> RecordingFolder::create(const QString &target)
{
    const QString path = newWorkFolderPath(QFileInfo(target).path()) + recordingFolderEnding();
    std::unique_ptr<RecordingFolder> folder(new RecordingFolder(path));
    if (makeWorkFolder(path) != WorkFolderState::Made)
        return nullptr;
    folder->m_target = target;
    const OpenFolder held = OpenFolder::at(path);
    QSaveFile file(held.filePath(targetFile));
    if (file.open(QIODevice::WriteOnly) && file.write(target.toUtf8()) > 0 && file.commit())
        return folder;
    folder->remove();
    return nullptr;
}

std::unique_ptr<RecordingFolder> RecordingFolder::takeOver(const QString &path)
{
    if (openFolders().contains(path) || isBeingMade(path) || !claimWorkFolder(path))
        return nullptr;
    std::unique_ptr<RecordingFolder> folder(new RecordingFolder(path));
    QFile file(folder->filePath(targetFile));
    if (file.open(QIODevice::ReadOnly))
        folder->m_target = QString::fromUtf8(file.readAll());
    // The output folder may have been moved with what is in it.
    const QDir outputDir(QDir::cleanPath(path + QLatin1String("/../..")));
    const QString name = QFileInfo(folder->m_target).fileName();
    folder->m_target =
        outputDir.absoluteFilePath(name.isEmpty() ? QStringLiteral("rec.mp4") : name);
    return folder;
}

RecordingFolder::~RecordingFolder()
{
    releaseWorkFolder(m_path);
    openFolders().remove(m_path);
}

QString RecordingFolder::newPiece()
{
    // Four digits, so that names sort as the pieces do.
    return filePath(QStringLiteral("%1").arg(++m_count, 4, 10, QLatin1Char('0')) + pieceEnding);
}

QStringList RecordingFolder::pieces() const
{
    QStringList paths;
    const QStringList pattern{QLatin1Char('*') + pieceEnding};
    for (const QFileInfo &piece : QDir(m_path).entryInfoList(pattern, QDir::Files, QDir::Name)) {
        if (piece.size() > 0)
            paths += piece.filePath();
    }
    return paths;
}

QString RecordingFolder::filePath(const QString &name) const
{
    return QDir(m_path).filePath(name);
}

void RecordingFolder::remove()
{
    removeDirRecursively(m_path);
}
