// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/filealiases.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaFormats/mediaformats.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <algorithm>

namespace {

// What the reading of "movie='…'" inside a quoted command would take for its own.
bool isFilterSyntax(QChar c)
{
    return QStringLiteral("='\"%\\;[]").contains(c) || c.category() == QChar::Other_Control;
}

// For all other suffixes ffmpeg may choose its reader of numbered pictures.
bool isFilm(const QString &path)
{
    return mediaClassOf(QFileInfo(path).suffix()) != UnknownMediaClass;
}

} // namespace

QString FileAliases::forFilter(const QString &path)
{
    return std::any_of(path.cbegin(), path.cend(), isFilterSyntax) ? link(path) : path;
}

QString FileAliases::forInput(const QString &path)
{
    return path.contains(QLatin1Char('%')) && !isFilm(path) ? link(path) : path;
}

QString FileAliases::forPictures(const QString &folder)
{
    return folder.contains(QLatin1Char('%')) ? link(folder) : folder;
}

QString FileAliases::forFields(const QString &path)
{
    return path.contains(QLatin1Char('|')) ? link(path) : path;
}

FileAliases::~FileAliases()
{
    clear();
}

void FileAliases::clear()
{
    m_isIncomplete = false;
    if (m_dir.isEmpty())
        return;
    removeDirRecursively(m_dir);
    releaseWorkFolder(m_dir);
    m_dir.clear();
    m_count = 0;
}

QString FileAliases::forImage(const QImage &picture)
{
    // Quickly written: it is read once or twice.
    constexpr int littleCompression = 90;
    const QString path = newPath() + QLatin1String(".png");
    return noted(picture.save(path, "png", littleCompression), path, {});
}

QString FileAliases::problem() const
{
    return m_isIncomplete
               ? tr("临时文件夹无法写入或空间不足：%1").arg(QDir::toNativeSeparators(tempDir()))
               : QString();
}

QString FileAliases::noted(bool isMade, const QString &made, const QString &instead)
{
    m_isIncomplete = m_isIncomplete || !isMade;
    return isMade ? made : instead;
}

QString FileAliases::newPath()
{
    if (m_dir.isEmpty()) {
        m_dir = newWorkFolderPath(tempDir());
        makeWorkFolder(m_dir);
    }
    return QStringLiteral("%1/file%2").arg(m_dir, QString::number(++m_count));
}

QString FileAliases::link(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    const bool plainSuffix =
        std::all_of(suffix.cbegin(), suffix.cend(), [](QChar c) { return c.isLetterOrNumber(); });
    QString alias = newPath();
    if (plainSuffix && !suffix.isEmpty())
        alias += QLatin1Char('.') + suffix;
    return noted(QFile::link(QFileInfo(path).absoluteFilePath(), alias), alias, path);
}
