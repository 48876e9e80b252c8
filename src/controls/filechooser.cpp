// SPDX-License-Identifier: MIT
#include "controls/filechooser.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include <optional>
#include <utility>

namespace {

std::optional<QStringList> &nextAnswer()
{
    static std::optional<QStringList> answer;
    return answer;
}

std::optional<QStringList> takeNextAnswer()
{
    return std::exchange(nextAnswer(), std::nullopt);
}

// Where the user looked last, at first the folder of films.
QString &lastFolder()
{
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    return folder;
}

QString startFolder(const FileChooser::Request &request)
{
    return request.directory.isEmpty() ? lastFolder() : request.directory;
}

void rememberFolderOf(const QString &file)
{
    if (!file.isEmpty())
        lastFolder() = QFileInfo(file).path();
}

} // namespace

namespace FileChooser {

QStringList chooseFiles(QWidget *parent, const Request &request)
{
    if (const auto answer = takeNextAnswer())
        return *answer;
    const QStringList files =
        QFileDialog::getOpenFileNames(parent, request.title, startFolder(request), request.filter);
    rememberFolderOf(files.value(0));
    return files;
}

QString chooseFile(QWidget *parent, const Request &request)
{
    if (const auto answer = takeNextAnswer())
        return answer->value(0);
    const QString file =
        QFileDialog::getOpenFileName(parent, request.title, startFolder(request), request.filter);
    rememberFolderOf(file);
    return file;
}

QString chooseDirectory(QWidget *parent, const Request &request)
{
    if (const auto answer = takeNextAnswer())
        return answer->value(0);
    return QFileDialog::getExistingDirectory(parent, request.title, startFolder(request));
}

void setNextAnswer(const QStringList &paths)
{
    nextAnswer() = paths;
}

} // namespace FileChooser
