// SPDX-License-Identifier: MIT
#pragma once

#include "support/toolrun.h"

#include <QTemporaryDir>
#include <QtTest>

/// A test with a folder of media files, on which no tool may still be at work behind a case.
class MediaTest : public QObject
{
    Q_OBJECT

protected:
    QString media(const QString &name) const { return m_media.filePath(name); }
    bool isAnyToolAtWork() const { return !processesWith(m_media.path()).isEmpty(); }

private slots:
    void cleanup() { QTRY_VERIFY(!isAnyToolAtWork()); }

private:
    QTemporaryDir m_media;
};
