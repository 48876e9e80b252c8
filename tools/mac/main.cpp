// SPDX-License-Identifier: MIT
// mac IN.wav OUT.ape -cN000: encodes with level N (1 fast, 2 normal, 3 high). Exit code 0 means
// that OUT is there and complete.
#include "cage/cage.h"
#include "cage/installedtool.h"
#include "MediaKits/MediaProcessor/reporttail.h"
#include "platform/childprocess.h"
#include "platform/openfolder.h"
#include "platform/utf8locale.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>
#include <cstdio>

namespace {

constexpr int usageExitCode = 2;

void say(const QString &line)
{
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

// The level as the library's command takes it ("c3"); empty for anything else.
QString levelCommand(const QString &option)
{
    static const QRegularExpression level(QStringLiteral("^-(c[123])000$"));
    return level.match(option).captured(1);
}

// Whether all the samples that a WAV file's header promises are there: the library waits for the
// missing ones without end. A file of any other kind is left to the library to refuse.
bool isComplete(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    using Name = std::array<char, 4>;
    Name name{};
    quint32 size = 0;
    const auto readHeader = [&] {
        if (stream.readRawData(name.data(), int(name.size())) != int(name.size()))
            return false;
        stream >> size;
        return stream.status() == QDataStream::Ok;
    };
    if (!readHeader() || name != Name{'R', 'I', 'F', 'F'} || !file.seek(12)) // "RIFF", size, "WAVE"
        return true;
    while (readHeader()) {
        const qint64 end = file.pos() + qint64(size);
        if (name == Name{'d', 'a', 't', 'a'})
            return end <= file.size();
        if (!file.seek(end + size % 2)) // chunks begin at even places
            return true;
    }
    return false;
}

// This tool and the one that it starts.
// @return path of the latter
std::string confineEncoder(const QString &input, const OpenFolder &output)
{
    cage::Needs needs;
    needs.program = cage::findTool("/usr/bin/java");
    needs.readable = {QFile::encodeName(input).toStdString(), MORVANE_JMAC_JAR};
    needs.writable = {output.path().toStdString()};
    cage::confine(needs);
    return needs.program;
}

int encode(const QString &input, const QString &output, const QString &level)
{
    // Frozen and woken together with this tool.
    ChildProcess child(nullptr, ChildProcess::Group::Program);
    // By way of the open folder: something else may take its name.
    const QFileInfo wanted(output);
    const OpenFolder folder = OpenFolder::at(wanted.path());
    if (!folder.isOpen()) {
        say(output + QLatin1String(": permission denied"));
        return 1;
    }
    child.setWorkingDirectory(folder.path());
    const std::string java = confineEncoder(input, folder);
    child.start(QString::fromStdString(java),
                {QStringLiteral("-XX:-UsePerfData"), QStringLiteral("-cp"),
                 QStringLiteral(MORVANE_JMAC_JAR), QStringLiteral("davaguine.jmac.core.jmacu"),
                 level, input, QLatin1String("./") + wanted.fileName()},
                QIODevice::ReadOnly);
    child.waitForFinished(-1);
    ReportTail report;
    report.append(child.readAllStandardError());
    const QString text = report.text();
    // The library ends with 0 also when it has given up: its stack trace tells.
    const bool gaveUp =
        text.contains(QLatin1String("Exception")) || text.contains(QLatin1String("Error"));
    if (child.error() == QProcess::UnknownError && child.exitStatus() == QProcess::NormalExit &&
        child.exitCode() == 0 && !gaveUp &&
        QFileInfo(folder.filePath(wanted.fileName())).size() > 0)
        return 0;

    folder.remove(wanted.fileName());
    say(text.isEmpty() ? child.errorString() : text.section(QLatin1Char('\n'), 0, 0));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString level = levelCommand(arguments.value(3));
    if (arguments.size() != 4 || level.isEmpty()) {
        say(QStringLiteral("mac IN.wav OUT.ape -c1000|-c2000|-c3000"));
        return usageExitCode;
    }
    if (!isComplete(arguments[1])) {
        say(arguments[1] + QLatin1String(": the file ends before its sound does"));
        return 1;
    }
    return encode(QFileInfo(arguments[1]).absoluteFilePath(),
                  QFileInfo(arguments[2]).absoluteFilePath(), level);
}
