// SPDX-License-Identifier: MIT
#include "platform/filemanager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {
// $1 is the file's URL, $2 the folder to open when no file manager answers on the session bus.
// Only a process that waits for the bus's answer can tell, hence the shell: this program doesn't
// wait. The names come in as arguments and are never part of the script.
const char *const revealScript =
    "dbus-send --session --print-reply --reply-timeout=5000 --type=method_call "
    "--dest=org.freedesktop.FileManager1 /org/freedesktop/FileManager1 "
    "org.freedesktop.FileManager1.ShowItems \"array:string:$1\" string: >/dev/null 2>&1 "
    "|| exec xdg-open \"$2\"";

bool startDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(program, arguments);
}

// dbus-send divides an array at each comma, so commas too are percent-encoded here.
QString fileUrl(const QString &absolutePath)
{
    const QByteArray encoded = QFile::encodeName(absolutePath).toPercentEncoding("/");
    return QStringLiteral("file://") + QString::fromLatin1(encoded);
}
} // namespace

void revealInDesktop(const QString &path, const DetachedStarter &start)
{
    const DetachedStarter run = start ? start : DetachedStarter(startDetached);
    const QFileInfo info(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (!info.exists()) {
        run(QStringLiteral("xdg-open"), {info.absolutePath()});
        return;
    }
    const QString folder = info.isDir() ? info.absoluteFilePath() : info.absolutePath();
    run(QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QString::fromLatin1(revealScript), QStringLiteral("sh"),
         fileUrl(info.absoluteFilePath()), folder});
}
