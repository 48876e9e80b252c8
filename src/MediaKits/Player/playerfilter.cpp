// SPDX-License-Identifier: MIT
#include "MediaKits/Player/playerfilter.h"

#include <QHash>
#include <QSize>
#include <QStringList>

namespace {

using Texts = QHash<QString, QString>;

// Names that stand for one text, whatever the value.
const Texts &fixedFilters()
{
    static const Texts table{
        {QStringLiteral("flip"), QStringLiteral("vflip")},
        {QStringLiteral("mirror"), QStringLiteral("hflip")},
        {QStringLiteral("noise"), QStringLiteral("noise=alls=9:allf=t")},
        {QStringLiteral("blur"), QStringLiteral("unsharp=la=-1.5:ca=-1.5")},
        {QStringLiteral("sharpen"), QStringLiteral("unsharp=la=1.5:ca=1.5")},
        {QStringLiteral("dering"), QStringLiteral("pp=dr")},
        {QStringLiteral("postprocessing"), QStringLiteral("pp")},
        {QStringLiteral("lb"), QStringLiteral("pp=lb")},
        {QStringLiteral("l5"), QStringLiteral("pp=l5")},
        {QStringLiteral("karaoke"), QStringLiteral("stereotools=mlev=0.015625")},
    };
    return table;
}

const Texts &rotations()
{
    static const Texts table{
        {QStringLiteral("0"), QStringLiteral("rotate=3*PI/2:ih:iw,vflip")},
        {QStringLiteral("1"), QStringLiteral("rotate=PI/2:ih:iw")},
        {QStringLiteral("2"), QStringLiteral("rotate=3*PI/2:ih:iw")},
        {QStringLiteral("3"), QStringLiteral("rotate=PI/2:ih:iw,vflip")},
        {QStringLiteral("4"), QStringLiteral("hflip,vflip")},
    };
    return table;
}

const Texts &stereoModes()
{
    static const Texts table{
        {QStringLiteral("left"), QStringLiteral("pan=mono|c0=c0")},
        {QStringLiteral("right"), QStringLiteral("pan=mono|c0=c1")},
        {QStringLiteral("reverse"), QStringLiteral("pan=stereo|c0=c1|c1=c0")},
        {QStringLiteral("mono"), QStringLiteral("pan=mono|c0=.5*c0+.5*c1")},
    };
    return table;
}

QString withValue(const QString &filter, const QString &value)
{
    return value.isEmpty() ? filter : filter + QLatin1Char('=') + value;
}

QString letterbox(const QVariant &value)
{
    if (value.userType() != QMetaType::QSize)
        return {};
    const QSize size = value.toSize();
    return QStringLiteral("pad=iw:iw*sar/%1*%2:0:(oh-ih)/2").arg(size.width()).arg(size.height());
}

QString filterText(const QString &name, const QVariant &value)
{
    const QString text = value.toString();
    if (name == QLatin1String("letterbox"))
        return letterbox(value);
    if (value.isValid() && value.userType() != QMetaType::QString)
        return {};
    if (name.isEmpty())
        return text;
    if (fixedFilters().contains(name))
        return fixedFilters().value(name);
    if (name == QLatin1String("rotate"))
        return rotations().value(text);
    if (name == QLatin1String("stereo-mode"))
        return stereoModes().value(text);
    if (name == QLatin1String("deblock"))
        return QLatin1String("pp=") + text;
    if (name == QLatin1String("yadif"))
        return text == QLatin1String("1") ? QStringLiteral("yadif=mode=send_field")
                                          : QStringLiteral("yadif=mode=send_frame");
    if (name == QLatin1String("vscale"))
        return QStringLiteral("scale=iw*%1:ih*%1").arg(text);
    if (name == QLatin1String("volnorm"))
        return withValue(QStringLiteral("acompressor"), text);
    return withValue(name, text);
}

// The player's brackets can't hold a closing one: such a text stands behind its length in bytes.
QString lavfi(const QString &text)
{
    if (!text.contains(QLatin1Char(']')))
        return QLatin1String("lavfi=[") + text + QLatin1Char(']');
    return QStringLiteral("lavfi=%%1%").arg(text.toUtf8().size()) + text;
}

// As the player reads a word in double quotes.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString operationWord(FilterOperation operation)
{
    switch (operation) {
    case FilterOperation::Set:
        return QStringLiteral("set");
    case FilterOperation::Add:
        return QStringLiteral("add");
    case FilterOperation::Toggle:
        return QStringLiteral("toggle");
    case FilterOperation::Delete:
        return QStringLiteral("del");
    case FilterOperation::Clear:
        break;
    }
    return QStringLiteral("clr");
}

} // namespace

QString filterCommand(FilterOperation operation, const QString &name, const QVariant &value)
{
    QString text;
    if (operation == FilterOperation::Delete && value.userType() == QMetaType::Int) {
        text = QString::number(value.toInt());
    } else if (operation != FilterOperation::Clear) {
        text = filterText(name, value);
        if (!text.isEmpty())
            text = lavfi(text);
    }
    return operationWord(operation) + QLatin1Char(' ') + quoted(text);
}

QString labelledGraphCommand(const QString &label, const QString &graph)
{
    const QString name = QLatin1Char('@') + label;
    return graph.isEmpty() ? QLatin1String("remove ") + quoted(name)
                           : QLatin1String("add ") + quoted(name + QLatin1Char(':') + lavfi(graph));
}
