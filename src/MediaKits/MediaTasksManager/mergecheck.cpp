// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mergecheck.h"

#include "MediaKits/MediaTasksManager/ffmpegtask.h"

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("MergeCheck", text);
}

// What all parts promise together, apart from its length.
ExpectedResult together(const QVector<MergePart> &parts)
{
    ExpectedResult whole;
    for (const MergePart &part : parts) {
        whole.hasPicture = whole.hasPicture || part.expected.hasPicture;
        whole.hasSound = whole.hasSound || part.expected.hasSound;
        if (part.expected.hasPicture)
            whole.pictureSize = part.expected.pictureSize;
    }
    return whole;
}

// The remarks of a part, which name it.
QStringList partRemarks(const MergePart &part, const ResultVerdict &verdict)
{
    QStringList remarks;
    if (!verdict.failure.isEmpty())
        remarks += tr("%1：%2").arg(part.name, verdict.failure);
    for (const QString &text : verdict.remarks)
        remarks += tr("%1：%2").arg(part.name, text);
    return remarks;
}

} // namespace

ResultVerdict checkMerge(const QVector<QSharedPointer<MediaInfoData>> &read,
                         const QVector<MergePart> &parts, const FFmpegTask &join)
{
    QStringList remarks;
    QStringList report = join.report();
    ExpectedResult whole = together(parts);
    bool areTimesKnown = true;
    for (int i = 0; i < parts.size(); ++i) {
        const MergePart &part = parts[i];
        const auto &made = read[i + 1];
        const ResultVerdict verdict = checkMade(part.expected, made.data(), *part.maker);
        const QStringList own = partRemarks(part, verdict);
        if (!own.isEmpty())
            report = verdict.report;
        remarks += own;
        const qint64 partMs = made ? made->format->duration : 0;
        areTimesKnown = areTimesKnown && partMs > 0;
        whole.lengthMs += partMs;
    }
    if (!areTimesKnown)
        whole.lengthMs = 0;
    whole.measure = tr("各部分之和");
    const auto &result = read.first();
    FFmpegAccount account = join.account();
    // Players go by a header that tells a length, whatever was copied behind it.
    if (result && result->content.toldMs > 0)
        account.writtenMs = 0;
    ResultVerdict verdict = checkResult(whole, result.data(), account);
    verdict.remarks = remarks + verdict.remarks;
    verdict.report = report;
    return verdict;
}
