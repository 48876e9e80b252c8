// SPDX-License-Identifier: MIT
#include "support/testfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

void writeTestFile(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeTestProgram(const QString &path, const QByteArray &script)
{
    writeTestFile(path, "#!/bin/sh\n" + script + '\n');
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

QByteArray nextLine(QProcess *process)
{
    constexpr int timeoutMs = 10000;
    while (!process->canReadLine() && process->waitForReadyRead(timeoutMs)) {
    }
    return process->readLine().trimmed();
}
