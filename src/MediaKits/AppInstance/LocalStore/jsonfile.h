// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

/// One JSON file of a store. It takes care that no content is lost: what can't be understood is
/// set aside under another name (of what is understood in part, a copy), what can't be read is
/// never written over, and a write either replaces the whole file or leaves the old one.
class JsonFile
{
public:
    JsonFile() = default;
    explicit JsonFile(const QString &path);

    /// The file's object; empty when the file is missing, can't be read, or isn't a JSON object.
    /// What is of the last kind, or no file at all, is renamed to its name plus ".broken",
    /// ".broken2" and so on.
    QJsonObject read();

    /// Tells what a store has taken of the last read(), as it would be written. When the file holds
    /// more, as behind a damaged key, the next write() copies it aside first.
    void compareWith(const QJsonObject &taken);

    /// Replaces the file, and makes its directory when that is missing; only the user may read
    /// the result. Does nothing when the last read() found a file that has to be kept, when the
    /// text is the one that was read or written last, and behind forbidWriting().
    /// @return whether the file holds the object
    bool write(const QJsonObject &object, QJsonDocument::JsonFormat format);

    /// For a process that gives way to another: from now on no file is written, since what this one
    /// has read is old.
    static void forbidWriting();

    /// Whether the last read() found an object, be it an empty one.
    bool hasObject() const { return m_hasObject; }
    /// Where the last read(), or the first write() behind it, has set the file aside; empty when
    /// neither did.
    QString asidePath() const { return m_asidePath; }

private:
    QString m_path;
    QString m_asidePath;
    bool m_mustKeep = false;
    bool m_hasObject = false;
    bool m_holdsMore = false; ///< than has been taken
    QJsonObject m_object;     ///< until it is known what has been taken of it
    QByteArray m_known;       // text that was read or written last
};
