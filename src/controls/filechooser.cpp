// SPDX-License-Identifier: MIT
#include "controls/filechooser.h"

#include <QDir>
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
    QString folder = request.directory.isEmpty() ? lastFolder() : request.directory;
    // An output folder comes into being with its first file.
    while (QDir::isAbsolutePath(folder) && !QFileInfo::exists(folder))
        folder = QFileInfo(folder).path();
    return folder;
}

// A semicolon at the end would make Qt take the name of the filter for a pattern.
QString cleanFilter(QString filter)
{
    while (filter.endsWith(QLatin1Char(';')))
        filter.chop(1);
    return filter;
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
    const QStringList files = QFileDialog::getOpenFileNames(
        parent, request.title, startFolder(request), cleanFilter(request.filter), nullptr,
        QFileDialog::HideNameFilterDetails);
    rememberFolderOf(files.value(0));
    return files;
}

QString chooseFile(QWidget *parent, const Request &request)
{
    if (const auto answer = takeNextAnswer())
        return answer->value(0);
    const QString file = QFileDialog::getOpenFileName(parent, request.title, startFolder(request),
                                                      cleanFilter(request.filter), nullptr,
                                                      QFileDialog::HideNameFilterDetails);
    rememberFolderOf(file);
    return file;
}

QString chooseDirectory(QWidget *parent, const Request &request)
{
    if (const auto answer = takeNextAnswer())
        return answer->value(0);
    const QString folder =
        QFileDialog::getExistingDirectory(parent, request.title, startFolder(request));
    if (request.directory.isEmpty() && !folder.isEmpty())
        lastFolder() = folder;
    return folder;
}

void setNextAnswer(const QStringList &paths)
{
    nextAnswer() = paths;
}

} // namespace FileChooser
