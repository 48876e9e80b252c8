// SPDX-License-Identifier: MIT
#include "updater/installation.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "platform/exchange.h"
#include "platform/ownfolder.h"
#include "updater/texts.h"
#include "updater/unpack.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// What the installer or the user wrote stands, also when a package has a file of that name.
const QString settingsName = QStringLiteral("main.ini");
// What came with a version, a path in the folder on each line; all else is the user's. A first
// installation has it of the build.
const QString listName = QStringLiteral("/.package-files");
constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
constexpr mode_t onlyOwner = 0700;
constexpr mode_t everyone = 0777;

bool isThere(const QFileInfo &entry)
{
    return entry.isSymLink() || entry.exists();
}

QString targetOf(const QString &link)
{
    QByteArray target(4096, '\0');
    const ssize_t length =
        ::readlink(QFile::encodeName(link).constData(), target.data(), size_t(target.size()));
    return QFile::decodeName(target.left(int(length)));
}

// A second name costs no room; where the file system knows none, a copy has to do.
bool bringFile(const QString &from, const QString &to)
{
    return ::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0 ||
           QFile::copy(from, to);
}

bool takeMode(const QString &from, const QString &to)
{
    struct stat old = {};
    return ::stat(QFile::encodeName(from).constData(), &old) == 0 &&
           ::chmod(QFile::encodeName(to).constData(), old.st_mode & everyone) == 0;
}

bool listFiles(const QString &folder)
{
    QByteArray list;
    const QDir root(folder);
    QDirIterator entries(folder, everything, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString name = root.relativeFilePath(entries.next());
        const QFileInfo entry = entries.fileInfo();
        if (name != settingsName && (entry.isSymLink() || !entry.isDir()))
            list += QFile::encodeName(name) + '\n';
    }
    QFile file(folder + listName);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(list) == list.size();
}

// Absolute paths.
QSet<QString> listedFiles(const QString &folder)
{
    QSet<QString> paths{folder + listName};
    QFile file(folder + listName);
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &name : file.readAll().split('\n'))
            paths.insert(folder + QLatin1Char('/') + QFile::decodeName(name));
    }
    return paths;
}

bool bringMissing(const QString &from, const QString &to, const QSet<QString> &dropped);

// One in which nothing is left to bring goes, too.
bool bringFolder(const QString &from, const QString &to, const QSet<QString> &dropped)
{
    if (!QDir().mkpath(to) || !bringMissing(from, to, dropped) || !takeMode(from, to))
        return false;
    if (!QDir(from).isEmpty(everything))
        QDir().rmdir(to);
    return true;
}

bool bringMissing(const QString &from, const QString &to, const QSet<QString> &dropped)
{
    const QFileInfoList entries = QDir(from).entryInfoList(everything);
    for (const QFileInfo &entry : entries) {
        const QString path = entry.filePath();
        const QString place = to + QLatin1Char('/') + entry.fileName();
        const QFileInfo there(place);
        const bool isFolder = entry.isDir() && !entry.isSymLink();
        bool done = true;
        if (isFolder && !isThere(there))
            done = bringFolder(path, place, dropped);
        else if (isFolder && there.isDir() && !there.isSymLink())
            done = bringMissing(path, place, dropped);
        else if (isThere(there) || dropped.contains(path))
            continue;
        else if (entry.isSymLink())
            done = QFile::link(targetOf(path), place);
        else if (entry.isFile())
            done = bringFile(path, place);
        if (!done)
            return false;
    }
    return true;
}

bool isProgram(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && !file.isSymLink() && file.isExecutable();
}

} // namespace

Installation::Installation(const QString &folder)
    : m_folder(QDir::cleanPath(folder)), m_work(updateWorkFolder(m_folder))
{
}

QString Installation::prepare(const QString &package, const QString &program)
{
    if (!isOwnFolder(m_folder))
        return Texts::tr("没有权限更改：") + m_folder;
    // Of an update that was killed.
    keep();
    if (::mkdir(QFile::encodeName(m_work).constData(), onlyOwner) != 0)
        return Texts::tr("无法创建文件夹：") + m_work;
    QString error = unpack(package);
    if (error.isEmpty())
        error = checkPrograms(program);
    if (error.isEmpty())
        error = bringOld();
    if (!error.isEmpty())
        tidy();
    return error;
}

QString Installation::checkPrograms(const QString &program)
{
    const QString programs[] = {otherProgram(program), newFolder() + QLatin1String("/updater")};
    for (const QString &path : programs) {
        m_isPackageUnfit = !isProgram(path);
        if (m_isPackageUnfit)
            return Texts::tr("升级包缺少程序：") + path;
    }
    return {};
}

QString Installation::bringOld() const
{
    if (QFile::exists(m_folder + QLatin1Char('/') + settingsName))
        QFile::remove(newFolder() + QLatin1Char('/') + settingsName);
    const bool isBrought = listFiles(newFolder()) &&
                           bringMissing(m_folder, newFolder(), listedFiles(m_folder)) &&
                           takeMode(m_folder, newFolder());
    QFile note(updateTrialNote(newFolder()));
    if (isBrought && note.open(QIODevice::WriteOnly) && flushFileSystem(m_work))
        return {};
    return Texts::tr("无法写入：") + m_work;
}

QString Installation::unpack(const QString &package)
{
    QFile file(package);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return package + QLatin1String(": ") + file.errorString();
    const UpdatePackage accepted = readUpdatePackage(file, updateKey(), appNumber());
    if (!accepted.isAccepted())
        return accepted.refusal;
    if (!QDir().mkpath(newFolder()) || !file.seek(accepted.contentAt))
        return Texts::tr("无法创建文件夹：") + newFolder();
    QString error;
    m_isPackageUnfit = unpackArchive(file, newFolder(), error) == Unpacked::Unfit;
    return error;
}

QString Installation::exchange()
{
    QString error;
    if (!exchangePaths(m_folder, newFolder(), error))
        return m_folder + QLatin1String(": ") + error;
    flushFileSystem(m_work);
    return {};
}

bool Installation::isOnTrial() const
{
    return isUpdateOnTrial(m_folder);
}

void Installation::keep()
{
    QFile::remove(updateTrialNote(m_folder));
    tidy();
}

void Installation::tidy()
{
    const QFileInfo work(m_work);
    if (work.isSymLink())
        QFile::remove(m_work);
    else if (work.isDir())
        QDir(m_work).removeRecursively();
}

QString Installation::otherProgram(const QString &program) const
{
    return newFolder() + program.mid(m_folder.size());
}

QString Installation::newFolder() const
{
    return updateOtherFolder(m_folder);
}

QString Installation::startedMark() const
{
    return m_work + QLatin1String("/started");
}
