// SPDX-License-Identifier: MIT
#pragma once

#include "support/mediaprobe.h"
#include "support/utf8.h"

#include <QTemporaryDir>
#include <QTest>

/// Presets that keep the source, by the suffix of the result, and some with a size.
enum Preset {
    Mp4 = 1003001,
    Avi = 1006001,
    Wmv = 1004004,
    Vob = 1011002,
    Webm = 1012001,
    Ogv = 1021001,
    Flv = 2400005,
    Swf = 2402005,
    Mov = 1001001,
    Mkv = 1005001,
    F4v = 2401005,
    M4v = 1002004,
    Gp3 = 1015002,
    Mpeg = 1009001,
    Mov720 = 1001003,
    Mov480 = 1001004,
    Wmv480 = 1004001,
    Mpeg720 = 1009003,
};

/// A test of what real conversions make of films of eight areas of one colour each.
class PlayableTest : public QObject
{
    Q_OBJECT

protected:
    /// Makes a film of the areas in the test's folder.
    /// @param coding filters and options of the output
    void film(const QString &name, const QString &size, const QString &coding);
    /// Converts a file of the test's folder; fails the test when there is no result.
    /// @param options of the conversion
    ProbedFile converted(const QString &name, int preset, const QStringList &options = {});
    /// Fails the test unless the last result shows the areas as a player shows them.
    void verifyAreas(const QJsonObject &video) const;

    QString path(const QString &name) const { return m_dir.filePath(name); }
    /// Path of the last result.
    QString result() const { return m_result; }

private:
    QTemporaryDir m_dir;
    QTemporaryDir m_out;
    QString m_result;
};
