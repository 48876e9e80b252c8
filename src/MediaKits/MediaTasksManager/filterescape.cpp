// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/filterescape.h"

#include <initializer_list>

namespace {

struct Replacement
{
    QLatin1String from;
    QLatin1String to;
};

// In order, each step on the result of the one before: backslashes come first, so that those
// which later steps add aren't doubled.
const std::initializer_list<Replacement> filterValueSteps = {
    {QLatin1String("\\"), QLatin1String("\\\\")},
    {QLatin1String(","), QLatin1String("\\,")},
    {QLatin1String(":"), QLatin1String("\\:")},
};

const std::initializer_list<Replacement> drawtextSteps = {
    {QLatin1String("\\"), QLatin1String("\\\\\\\\\\\\\\\\")},
    {QLatin1String(","), QLatin1String("\\,")},
    {QLatin1String("'"), QLatin1String("\\\\\\'")},
    {QLatin1String("\""), QLatin1String("\"\"\"")},
    {QLatin1String(";"), QLatin1String("\\;")},
    {QLatin1String("["), QLatin1String("\\[")},
    {QLatin1String("]"), QLatin1String("\\]")},
    {QLatin1String("{"), QLatin1String("\\{")},
    {QLatin1String("}"), QLatin1String("\\}")},
    {QLatin1String(":"), QLatin1String("\\\\:")},
};

const std::initializer_list<Replacement> previewValueSteps = {
    {QLatin1String("\\"), QLatin1String("\\\\")},
    {QLatin1String(","), QLatin1String("\\\\,")},
    {QLatin1String(":"), QLatin1String("\\\\:")},
    {QLatin1String(";"), QLatin1String("\\\\;")},
};

const std::initializer_list<Replacement> previewTextSteps = {
    {QLatin1String("\\"), QLatin1String(" \\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\")},
    {QLatin1String(","), QLatin1String("\\\\,")},
    {QLatin1String(":"), QLatin1String("\\\\\\\\:")},
    {QLatin1String(";"), QLatin1String("\\\\;")},
    {QLatin1String("["), QLatin1String("\\\\[")},
    {QLatin1String("]"), QLatin1String("\\\\]")},
    {QLatin1String("{"), QLatin1String("\\\\{")},
    {QLatin1String("}"), QLatin1String("\\\\}")},
    {QLatin1String("'"), QLatin1String("\\\\\\\\\\\\'")},
    {QLatin1String("\""), QLatin1String("\\\\\\\"")},
    {QLatin1String("\r"), QLatin1String("\\\\\\r")},
    {QLatin1String("\n"), QLatin1String("\\\\\\n")},
    {QLatin1String("\t"), QLatin1String("\\\\\\t")},
    {QLatin1String("\v"), QLatin1String("\\\\\\v")},
};

QString replaceAll(QString text, const std::initializer_list<Replacement> &steps)
{
    for (const Replacement &step : steps)
        text.replace(step.from, step.to);
    return text;
}

} // namespace

QString escapeFilterValue(const QString &text)
{
    return replaceAll(text, filterValueSteps);
}

QString quoteFilterPath(const QString &path)
{
    return escapeFilterValue(QLatin1Char('\'') + path + QLatin1Char('\''));
}

QString escapeDrawtextText(const QString &text)
{
    QString escaped = replaceAll(text, drawtextSteps);
    // At the ends of a value they count for nothing.
    static const QString blanks = QStringLiteral(" \t\r\n");
    static const QString mark = QStringLiteral("\\\\\\");
    if (text.size() > 1 && blanks.contains(text.back()))
        escaped.insert(escaped.size() - 1, mark);
    if (!text.isEmpty() && blanks.contains(text.front()))
        escaped.prepend(mark);
    return escaped;
}

// Left alone, "%" would begin an expansion, and a text with any other use of it would not show.
QString escapeLiteralText(const QString &text)
{
    return escapeDrawtextText(text).replace(QLatin1Char('%'), QLatin1String("\\\\\\\\%"));
}

QString escapePreviewValue(const QString &text)
{
    return replaceAll(text, previewValueSteps);
}

QString escapePreviewText(const QString &text)
{
    return replaceAll(text, previewTextSteps);
}
