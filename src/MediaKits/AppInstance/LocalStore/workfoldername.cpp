// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/workfoldername.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QSysInfo>
#include <QUuid>

namespace {

constexpr int markDigits = 12;

// Copies of one installation share its id but seldom its name; without an id, a machine is another
// one after each start. Kept nowhere, since folders are cleaned until the very end of the process.
QString machineMark()
{
    QByteArray id = QSysInfo::machineUniqueId();
    if (id.isEmpty())
        id = QSysInfo::bootUniqueId();
    id += '\n' + QSysInfo::machineHostName().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(id, QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.toHex().left(markDigits));
}

// Empty for a name that tells no machine.
QString markOf(const QString &folderName)
{
    const QString part = folderName.section(QLatin1Char('.'), 1, 1);
    const QString mark = part.section(QLatin1Char('-'), 0, 0);
    return mark.size() == markDigits && part != mark ? mark : QString();
}

QDateTime lastWriting(const QFileInfo &folder)
{
    QDateTime last = folder.lastModified();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (QDirIterator entries(folder.filePath(), all, QDirIterator::Subdirectories);
         entries.hasNext();) {
        entries.next();
        last = qMax(last, entries.fileInfo().lastModified());
    }
    return last;
}

} // namespace

QString newWorkFolderName()
{
    return QStringLiteral("%1.%2-%3")
        .arg(QUuid::createUuid().toString(), machineMark(),
             QString::number(QCoreApplication::applicationPid()));
}

bool isInUseElsewhere(const QFileInfo &folder)
{
    constexpr qint64 dayMs = 24 * 60 * 60 * 1000;
    const QString mark = markOf(folder.fileName());
    if (mark.isEmpty() || mark == machineMark())
        return false;
    // The other machine's clock may be ahead.
    return qAbs(lastWriting(folder).msecsTo(QDateTime::currentDateTime())) < dayMs;
}
