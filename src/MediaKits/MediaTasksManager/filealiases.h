// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

class QImage;

/// Plain second names (links) for files whose path a tool can't take where it has to stand: a
/// filter reads "=" and quotes as its own syntax, an image reader takes "%d" for a pattern. The
/// links live in a claimed work folder of their own until the object goes.
class FileAliases
{
    Q_DECLARE_TR_FUNCTIONS(FileAliases)

public:
    FileAliases() = default;
    ~FileAliases();
    Q_DISABLE_COPY(FileAliases)

    /// @param path a file, or a folder that may come into being later
    /// @return `path` itself when a filter's "movie" takes it, else a link to it; `path` again when
    ///         no link can be made
    QString forFilter(const QString &path);

    /// The same for a file that stands behind "-i".
    QString forInput(const QString &path);

    /// The same for a folder of numbered pictures, which may come into being later.
    QString forPictures(const QString &folder);

    /// The same for a file or a folder that is told to a tool among fields which "|" separates.
    QString forFields(const QString &path);

    /// A file beside the links that holds a picture; empty when it can't be written.
    QString forImage(const QImage &picture);

    /// Why a link or a picture could not be made, in words for the user; empty when all could.
    QString problem() const;

    /// Removes all links and pictures.
    void clear();

private:
    QString link(const QString &path);
    QString newPath();
    QString noted(bool isMade, const QString &made, const QString &instead);

    QString m_dir; ///< empty while there are no links
    int m_count = 0;
    bool m_isIncomplete = false;
};
