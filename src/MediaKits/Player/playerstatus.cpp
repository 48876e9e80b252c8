// SPDX-License-Identifier: MIT
#include "MediaKits/Player/playerstatus.h"

#include <QRegularExpression>
#include <QTime>

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace {

constexpr int msOfSecond = 1000;

const QRegularExpression &timeStamp()
{
    static const QRegularExpression expression(QStringLiteral("([0-9]{2}\\:){2}[0-9]{2}"));
    return expression;
}

const QRegularExpression &percentage()
{
    static const QRegularExpression expression(QStringLiteral("([0-9]+)\\%"));
    return expression;
}

bool isStatus(const QString &line)
{
    const std::initializer_list<QLatin1String> beginnings{
        QLatin1String("A:"),          QLatin1String("(Paused) A:"),  QLatin1String("V:"),
        QLatin1String("(Paused) V:"), QLatin1String("(Paused) AV:"), QLatin1String("AV:")};
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&line](QLatin1String beginning) { return line.startsWith(beginning); });
}

// 0 for a time that no clock shows.
float seconds(const QString &stamp)
{
    const QTime time = QTime::fromString(stamp, QStringLiteral("hh:mm:ss"));
    return time.isValid() ? float(QTime(0, 0).secsTo(time)) : 0.0F;
}

// What the player may be told to put behind the whole seconds.
int fractionMs(const QString &line, int behind)
{
    static const QRegularExpression expression(QStringLiteral("\\G\\.([0-9]{3})"));
    return expression.match(line, behind).captured(1).toInt();
}

std::optional<PlayerStatus> parse(const QString &line)
{
    if (!isStatus(line))
        return std::nullopt;
    PlayerStatus status;
    int behind = 0;
    for (float *value : {&status.position, &status.total}) {
        const QRegularExpressionMatch match = timeStamp().match(line, behind);
        if (!match.hasMatch())
            break;
        *value = seconds(match.captured());
        behind = match.capturedEnd();
        if (value == &status.position)
            status.positionMs = int(*value) * msOfSecond + fractionMs(line, behind);
    }
    constexpr float whole = 100;
    status.percent = std::min(percentage().match(line, behind).captured(1).toFloat(), whole);
    return status;
}

} // namespace

QVector<PlayerStatus> playerStatuses(const QByteArray &output)
{
    QVector<PlayerStatus> statuses;
    const QString text = QString::fromLatin1(output.constData());
    for (QString line : text.split(QLatin1Char('\r'), Qt::SkipEmptyParts)) {
        line.remove(QLatin1Char('\n'));
        line.remove(QLatin1String("\x1b[K"));
        if (const auto status = parse(line))
            statuses += *status;
    }
    return statuses;
}
