// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Intake/mediafilechoice.h"

#include "controls/filechooser.h"
#include "platform/undecodablenames.h"

#include <QCoreApplication>
#include <QDir>

namespace {

FileChooser::Request requestFor(const QString &filter)
{
    FileChooser::Request request;
    request.title = QCoreApplication::translate("MediaFileChoice", "请选择文件");
    request.filter = filter;
    return request;
}

} // namespace

QStringList chooseMediaFiles(QWidget *parent, const QString &filter)
{
    return FileChooser::chooseFiles(parent, requestFor(filter));
}

QString chooseMediaFolder(QWidget *parent)
{
    return FileChooser::chooseDirectory(parent, requestFor({}));
}

QStringList mediaFilesIn(const QString &folder, const QStringList &patterns)
{
    const QDir dir(QDir(folder).absolutePath());
    QStringList files;
    for (const QString &name : dir.entryList(patterns, QDir::Files | QDir::Readable))
        files.append(dir.filePath(name));
    for (const QString &name : undecodableNames(dir.path())) {
        if (QDir::match(patterns, name))
            files.append(dir.filePath(name));
    }
    return files;
}
