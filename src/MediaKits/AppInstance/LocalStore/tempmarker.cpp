// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/workfoldername.h"
#include "platform/directorylock.h"
#include "platform/hiddenfolder.h"
#include "platform/openfolder.h"
#include "platform/workplace.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

#include <map>

namespace {
// A job needs a moment between making its folder and claiming it.
constexpr qint64 unclaimedGraceMs = 10000;
// Another process that is just cleaning the marker is waited for this often and long.
constexpr int lockTries = 10;
constexpr unsigned long lockRetryMs = 10;
const QString keptEnding = QStringLiteral(".kept");
const QString recordingEnding = QStringLiteral(".recording");

bool isKept(const QString &folder)
{
    return folder.endsWith(keptEnding) || folder.endsWith(recordingEnding);
}

QString cleanAbsolute(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// The folder may lie on a volume that is away just now, but not for ever.
bool isForgotten(const QFileInfo &note, const QString &marker)
{
    constexpr qint64 keptDays = 30;
    return !QFileInfo(marker).dir().exists() &&
           note.lastModified().daysTo(QDateTime::currentDateTime()) > keptDays;
}

// Markers and claims of this process. A marker is locked shared by every process that uses it, a
// work folder exclusively by the one that claimed it; so who gets a marker exclusively knows that
// nobody alive has anything unclaimed in it. A note in the data directory names each marker in
// use, for a later run to clean up after a crash.
class MarkerRegistry
{
public:
    static MarkerRegistry &instance();
    ~MarkerRegistry();

    void open(const QString &marker);
    bool make(const QString &folder);
    bool claim(const QString &folder);
    QString place(const QString &folder) const;
    void release(const QString &folder);
    void sweepNoted();
    QStringList recordings() const;

private:
    // Touches what the destructor needs, so that it is still there at exit.
    MarkerRegistry() : m_notesDir(dataDir() + QStringLiteral("/TempMarkers")) {}

    void lockForUse(const QString &marker);
    void sweepContents(const QString &marker, bool alone);
    void dropIfEmpty(const QString &marker);
    void clean(const QString &marker);
    QString noteFile(const QString &marker) const;
    QString notedMarker(const QString &note) const;
    void writeNote(const QString &marker) const;

    const QString m_notesDir;
    std::map<QString, DirectoryLock> m_markers;
    // A folder stays here after its release, unlocked: it is still known to be this process's own.
    std::map<QString, DirectoryLock> m_claims;
};

MarkerRegistry &MarkerRegistry::instance()
{
    static MarkerRegistry registry;
    return registry;
}

MarkerRegistry::~MarkerRegistry()
{
    for (auto &[folder, lock] : m_claims)
        lock = DirectoryLock();
    for (auto &[marker, lock] : m_markers) {
        lock = DirectoryLock();
        clean(marker);
    }
}

void MarkerRegistry::open(const QString &marker)
{
    {
        // Once in use here, fresh folders in it may be this process's own.
        DirectoryLock exclusive;
        if (m_markers.count(marker) == 0)
            exclusive = DirectoryLock::tryExclusive(marker);
        sweepContents(marker, exclusive.isHeld());
    }
    lockForUse(marker);
    hideFolder(marker);
    writeNote(marker);
}

// Others remove an empty marker, so it is made and locked anew on each use.
void MarkerRegistry::lockForUse(const QString &marker)
{
    DirectoryLock lock;
    for (int i = 0; i < lockTries && !lock.isHeld(); ++i) {
        if (i > 0)
            QThread::msleep(lockRetryMs);
        if (!makePrivateFolder(marker))
            break;
        lock = DirectoryLock::tryShared(marker);
    }
    m_markers[marker] = std::move(lock);
}

bool MarkerRegistry::make(const QString &folder)
{
    const QString marker = QFileInfo(folder).path();
    const bool hasMarker = isTempMarkerName(QFileInfo(marker).fileName());
    for (int i = 0; i < lockTries; ++i) {
        // Another machine, which sees no lock of this one, removes an empty marker.
        if (hasMarker && !QFileInfo::exists(marker))
            lockForUse(marker);
        if (hasMarker && !makePrivateFolder(marker))
            return false;
        if (makePrivateFolder(folder) && OpenFolder::at(folder).isOpen()) {
            claim(folder);
            return true;
        }
    }
    return false;
}

bool MarkerRegistry::claim(const QString &folder)
{
    DirectoryLock &lock = m_claims[folder];
    if (!lock.isHeld())
        lock = DirectoryLock::tryExclusive(folder);
    const bool held = lock.isHeld();
    if (!held)
        m_claims.erase(folder);
    return held;
}

QString MarkerRegistry::place(const QString &folder) const
{
    const auto claim = m_claims.find(folder);
    const QString present = claim == m_claims.end() ? QString() : claim->second.place();
    // One that is kept has been moved here, out of reach of what removes work folders.
    return isKept(present) ? QString() : present;
}

void MarkerRegistry::release(const QString &folder)
{
    const auto claim = m_claims.find(folder);
    if (claim == m_claims.end())
        return;
    claim->second = DirectoryLock();
    if (!QFileInfo::exists(folder))
        m_claims.erase(claim);
}

void MarkerRegistry::sweepContents(const QString &marker, bool alone)
{
    // Held open: a link in the marker's place, now or later, leads to somebody else's files.
    const OpenFolder folder = OpenFolder::at(marker);
    if (!folder.isOpen())
        return;
    const QDateTime settled = QDateTime::currentDateTimeUtc().addMSecs(-unclaimedGraceMs);
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo &entry : QDir(folder.path()).entryInfoList(all)) {
        const QString name = entry.fileName();
        if (entry.isSymLink() || !entry.isDir()) {
            if (alone)
                folder.remove(name);
            continue;
        }
        if (isKept(name) || isInUseElsewhere(entry))
            continue;
        const bool isOwn = m_claims.count(marker + QLatin1Char('/') + name) > 0;
        if (!alone && !isOwn && entry.lastModified() > settled)
            continue;
        const DirectoryLock lock = DirectoryLock::tryExclusive(entry.filePath());
        if (lock.isHeld())
            folder.remove(name);
    }
}

// The note goes first and comes back if the marker stays: the other way round, it could be the
// note of a process that has made the marker again in between.
void MarkerRegistry::dropIfEmpty(const QString &marker)
{
    QFile::remove(noteFile(marker));
    const DirectoryLock lock = DirectoryLock::tryExclusive(marker);
    if (lock.isHeld())
        QDir().rmdir(marker);
    if (QFileInfo::exists(marker))
        writeNote(marker);
}

void MarkerRegistry::clean(const QString &marker)
{
    {
        const DirectoryLock exclusive = DirectoryLock::tryExclusive(marker);
        sweepContents(marker, exclusive.isHeld());
    }
    dropIfEmpty(marker);
}

void MarkerRegistry::sweepNoted()
{
    for (const QFileInfo &note : QDir(m_notesDir).entryInfoList(QDir::Files)) {
        const QString marker = notedMarker(note.filePath());
        if (marker.isEmpty() || isForgotten(note, marker))
            QFile::remove(note.filePath());
        else if (!QFileInfo(marker).dir().exists())
            continue;
        else if (m_markers.count(marker) == 0)
            clean(marker);
    }
}

QStringList MarkerRegistry::recordings() const
{
    QStringList folders;
    for (const QFileInfo &note : QDir(m_notesDir).entryInfoList(QDir::Files)) {
        const QString marker = notedMarker(note.filePath());
        if (marker.isEmpty())
            continue;
        const QStringList pattern{QLatin1Char('*') + recordingEnding};
        const QDir::Filters kinds = QDir::Dirs | QDir::NoSymLinks;
        if (!OpenFolder::at(marker).isOpen())
            continue;
        for (const QFileInfo &folder : QDir(marker).entryInfoList(pattern, kinds)) {
            if (!isInUseElsewhere(folder))
                folders += folder.filePath();
        }
    }
    return folders;
}

QString MarkerRegistry::noteFile(const QString &marker) const
{
    const QByteArray hash = QCryptographicHash::hash(marker.toUtf8(), QCryptographicHash::Sha1);
    return m_notesDir + QLatin1Char('/') + QString::fromLatin1(hash.toHex());
}

// Empty for a note that doesn't fit its own name or names anything but a marker: cleaning follows
// a note by deleting.
QString MarkerRegistry::notedMarker(const QString &note) const
{
    QFile file(note);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 longestPath = 4096;
    const QString marker = QString::fromUtf8(file.read(longestPath));
    const bool fits = marker == cleanAbsolute(marker) &&
                      QFileInfo(noteFile(marker)).fileName() == QFileInfo(note).fileName() &&
                      isTempMarkerName(QFileInfo(marker).fileName());
    return fits ? marker : QString();
}

void MarkerRegistry::writeNote(const QString &marker) const
{
    // The safe write waits for the disk; a note says the same for as long as it is there.
    QSaveFile file(noteFile(marker));
    if (QFileInfo::exists(file.fileName()) || !QDir().mkpath(m_notesDir) ||
        !file.open(QIODevice::WriteOnly))
        return;
    file.write(marker.toUtf8());
    file.commit();
}
} // namespace

QString tempMarkerName()
{
    return QString::fromLatin1(markerName);
}

bool isTempMarkerName(const QString &name)
{
    return isMarkerName(QFile::encodeName(name).toStdString());
}

bool isMarkerTaken(const QString &marker)
{
    const QFileInfo info(marker);
    return (info.exists() || info.isSymLink()) && !OpenFolder::at(marker).isOpen();
}

QString tempMarkerPath(const QString &dir)
{
    const QString marker = QDir::cleanPath(QDir(dir).absoluteFilePath(tempMarkerName()));
    return isMarkerTaken(marker) ? marker + userNumber() : marker;
}

QString createTempMarkerDir(const QString &dir)
{
    const QString marker = tempMarkerPath(dir);
    MarkerRegistry::instance().open(marker);
    return marker;
}

QString newWorkFolderPath(const QString &dir)
{
    return QDir(createTempMarkerDir(dir)).absoluteFilePath(newWorkFolderName());
}

WorkFolderState makeWorkFolder(const QString &path)
{
    const QString folder = cleanAbsolute(path);
    if (MarkerRegistry::instance().make(folder))
        return WorkFolderState::Made;
    return isMarkerTaken(QFileInfo(folder).path()) ? WorkFolderState::Refused
                                                   : WorkFolderState::Failed;
}

bool claimWorkFolder(const QString &path)
{
    return MarkerRegistry::instance().claim(cleanAbsolute(path));
}

QString presentWorkFolder(const QString &path)
{
    const QString present = MarkerRegistry::instance().place(cleanAbsolute(path));
    return present.isEmpty() ? path : present;
}

void releaseWorkFolder(const QString &path)
{
    MarkerRegistry::instance().release(cleanAbsolute(path));
}

QString keepWorkFolder(const QString &path)
{
    const QFileInfo folder(cleanAbsolute(path));
    const OpenFolder marker = OpenFolder::at(folder.path());
    const QString name = folder.fileName();
    if (isKept(name) || !marker.isOpen())
        return folder.filePath();
    const QString kept = name + keptEnding;
    const bool isRenamed = QFile::rename(marker.filePath(name), marker.filePath(kept));
    return folder.dir().filePath(isRenamed ? kept : name);
}

QString recordingFolderEnding()
{
    return recordingEnding;
}

QStringList recordingFolders()
{
    return MarkerRegistry::instance().recordings();
}

void sweepStaleMarkers()
{
    MarkerRegistry::instance().sweepNoted();
}
