// SPDX-License-Identifier: MIT
#include "updater/arguments.h"

#include <QFileInfo>
#include <QMap>
#include <QUrl>

namespace {

const QStringList &names()
{
    static const QStringList all{QStringLiteral("downloadurl"), QStringLiteral("downloadscale"),
                                 QStringLiteral("installpath"), QStringLiteral("lock"),
                                 QStringLiteral("startup")};
    return all;
}

QMap<QString, QString> valuesOf(const QStringList &words, QString &error)
{
    QMap<QString, QString> values;
    for (const QString &word : words) {
        const int end = word.indexOf(QLatin1Char('='));
        const QString name = word.left(end).mid(1);
        if (end < 0 || !word.startsWith(QLatin1Char('-')) || !names().contains(name) ||
            values.contains(name))
            error = QStringLiteral("unexpected: ") + word;
        values.insert(name, word.mid(end + 1));
    }
    for (const QString &name : names()) {
        if (error.isEmpty() && values.value(name).isEmpty())
            error = QStringLiteral("missing: -") + name;
    }
    return values;
}

} // namespace

UpdaterArguments UpdaterArguments::parse(const QStringList &words, QString &error)
{
    const QMap<QString, QString> values = valuesOf(words, error);
    const QUrl package(values.value(names().at(0)));
    UpdaterArguments arguments{package.toLocalFile(), values.value(names().at(2)),
                               values.value(names().at(3)), values.value(names().at(4))};
    if (!error.isEmpty())
        return arguments;
    if (!package.isLocalFile() || !QFileInfo(arguments.package).isAbsolute())
        error = QStringLiteral("the package isn't the URL of a file");
    else if (!QFileInfo(arguments.installFolder).isAbsolute())
        error = QStringLiteral("the installation isn't an absolute path");
    else if (!arguments.program.startsWith(arguments.installFolder + QLatin1Char('/')) ||
             arguments.program.contains(QLatin1String("/../")))
        error = QStringLiteral("the program isn't part of the installation");
    return arguments;
}
