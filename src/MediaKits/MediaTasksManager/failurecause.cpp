// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/failurecause.h"

#include "MediaKits/MediaProcessor/ffmpegreport.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace {

struct KnownReason
{
    const char *said; ///< how ffmpeg's line begins or ends
    const char *meaning;
};

const KnownReason knownReasons[] = {
    {"No space left on device", QT_TRANSLATE_NOOP("failureCause", "磁盘空间不足")},
    {"File too large", QT_TRANSLATE_NOOP("failureCause", "输出文件超出了大小限制")},
    // Of the launchers.
    {"no folder of this user alone", QT_TRANSLATE_NOOP("failureCause", "工作文件夹已被移走或替换")},
    {"Permission denied", QT_TRANSLATE_NOOP("failureCause", "没有访问权限")},
    {"Too many open files", QT_TRANSLATE_NOOP("failureCause", "打开的文件过多，系统不再允许")},
    {"(fork failure): Resource temporarily unavailable",
     QT_TRANSLATE_NOOP("failureCause", "进程过多，系统不再允许")},
    {"Resource temporarily unavailable",
     QT_TRANSLATE_NOOP("failureCause", "系统资源不足（进程或内存）")},
    {"Cannot allocate memory", QT_TRANSLATE_NOOP("failureCause", "内存不足")},
    {"x264 [error]: malloc of size ", QT_TRANSLATE_NOOP("failureCause", "内存不足")},
    {"std::bad_alloc", QT_TRANSLATE_NOOP("failureCause", "内存不足")},
    {"failed to map segment from shared object", QT_TRANSLATE_NOOP("failureCause", "内存不足")},
    {"moov atom not found", QT_TRANSLATE_NOOP("failureCause", "文件不完整或不是媒体文件")},
    {"Invalid data found when processing input",
     QT_TRANSLATE_NOOP("failureCause", "文件已损坏或不是媒体文件")},
    {"does not contain any stream",
     QT_TRANSLATE_NOOP("failureCause", "源文件中没有此格式能容纳的内容")},
    {"too many channels", QT_TRANSLATE_NOOP("failureCause", "此格式容纳不下这么多声道")},
    // Encoders that get no memory or no thread say nothing but that.
    {"maybe incorrect parameters such as bit_rate, rate, width or height",
     QT_TRANSLATE_NOOP("failureCause", "编码器无法启动，系统资源可能不足")},
    {"工具意外终止", QT_TRANSLATE_NOOP("failureCause", "转换工具意外终止，内存可能不足")},
};

// Lines that only say that something went wrong, behind the line that says what, and what an
// encoder tells of itself when it is closed.
bool isGeneral(const QString &line)
{
    static const QRegularExpression general(
        QStringLiteral("^Conversion failed!$|^Error initializing output stream|"
                       "^Error marking filters as finished$|incorrect codec parameters|"
                       "\\] Qavg: |frames left in the queue on closing$|^Last message repeated|"
                       "^video:\\d|^Stream mapping:|^Output #\\d|\\] kb/s:"));
    return general.match(line).hasMatch();
}

// Words of a line that names a fault.
bool namesFault(const QString &line)
{
    static const QRegularExpression fault(
        QStringLiteral("error|invalid|fail|unable|cannot|can't|could not|not found|no such|"
                       "support|denied|unknown|unrecogni|missing|no space|too |does not|"
                       "incompatible|refuse|illegal|not implemented"),
        QRegularExpression::CaseInsensitiveOption);
    return fault.match(line).hasMatch();
}

QString withoutSender(QString line)
{
    static const QRegularExpression sender(QStringLiteral("^\\[[^\\]]* @ 0x[0-9a-f]+\\] "));
    return line.remove(sender);
}

// A file's name in the report may hold the same words, but ffmpeg puts names in the middle.
bool says(const QStringList &report, const QString &words)
{
    return std::any_of(report.cbegin(), report.cend(), [&words](const QString &line) {
        return withoutSender(line).startsWith(words) || line.endsWith(words);
    });
}

// The file that a filter could not read sound from, as the report writes it; empty for none.
QString unreadMusic(const QStringList &report)
{
    static const QRegularExpression filter(
        QStringLiteral("Error initializing filter 'amovie' with args '(.*)'$"));
    for (const QString &line : report) {
        const QRegularExpressionMatch match = filter.match(line);
        if (match.hasMatch())
            return match.captured(1).section(QLatin1Char('/'), -1).remove(QLatin1Char('\\'));
    }
    return {};
}

} // namespace

QString tellingLine(const QStringList &report)
{
    QString last;
    for (auto it = report.crbegin(); it != report.crend(); ++it) {
        if (isGeneral(*it))
            continue;
        if (namesFault(*it))
            return withoutSender(*it);
        if (last.isEmpty())
            last = withoutSender(*it);
    }
    return last.isEmpty() && !report.isEmpty() ? report.last() : last;
}

QString failureCause(const QStringList &report)
{
    const auto told = [](const char *text) {
        return QCoreApplication::translate("failureCause", text);
    };
    const QString music = unreadMusic(report);
    if (!music.isEmpty())
        return told(QT_TRANSLATE_NOOP("failureCause", "配乐中没有可用的声音：%1")).arg(music);
    if (std::any_of(report.cbegin(), report.cend(), tellsUnreadableInput))
        return told(QT_TRANSLATE_NOOP("failureCause", "源文件读取出错，请检查磁盘或网络连接"));
    for (const KnownReason &reason : knownReasons) {
        if (says(report, QString::fromUtf8(reason.said)))
            return told(reason.meaning);
    }
    return report.isEmpty() ? told(QT_TRANSLATE_NOOP("failureCause", "转换工具异常退出"))
                            : told(QT_TRANSLATE_NOOP("failureCause", "转换工具无法处理该文件"));
}

// Names stand between colons. What may be one has a slash or a dot, which no cause of ours has.
QString causeWithoutNames(QString cause, const QStringList &files)
{
    static const QRegularExpression name(QStringLiteral("[/\\.]"));
    static const QRegularExpression divider(QStringLiteral("[：（），]"));
    for (const QString &file : files) {
        if (!file.isEmpty())
            cause.remove(file);
    }
    QStringList told;
    for (const QString &part : cause.split(divider, Qt::SkipEmptyParts)) {
        if (!part.contains(name))
            told += part;
    }
    return told.join(QStringLiteral("："));
}
