// SPDX-License-Identifier: MIT
// updater -downloadurl=file:///… -downloadscale=N -installpath=… -lock=… -startup=…
// Ends with 0 when the update is installed, with 1 when the old program stays, with 2 on arguments
// that make no sense.
//   updater -check=ARCHIVE
// Tells whether an archive could be installed, before it is signed: ends with 0 or 1.
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "platform/utf8locale.h"
#include "updater/unpack.h"
#include "updater/update.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

// Nobody looks at what this program says while it runs.
void note(const QString &text)
{
    std::fprintf(stderr, "updater: %s\n", qPrintable(text));
    QFile log(logDir() + QLatin1String("/updater.log"));
    if (log.open(QIODevice::Append))
        log.write((QDateTime::currentDateTime().toString(Qt::ISODate) + QLatin1Char(' ') + text +
                   QLatin1Char('\n'))
                      .toUtf8());
}

int check(const QString &archive)
{
    QFile file(archive);
    const QTemporaryDir place(QFileInfo(archive).absolutePath() + QLatin1String("/check-XXXXXX"));
    QString error;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !place.isValid())
        error = QStringLiteral("can't read %1, or write beside it").arg(archive);
    else if (file.size() > largestPackage)
        error = QStringLiteral("%1 bytes are too many").arg(file.size());
    else
        unpackArchive(file, place.path(), error);
    if (!error.isEmpty())
        std::fprintf(stderr, "updater: %s\n", qPrintable(error));
    return error.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    const QString checkOption = QStringLiteral("-check=");
    if (words.size() == 1 && words.first().startsWith(checkOption))
        return check(words.first().mid(checkOption.size()));
    // Of the update before this one.
    qunsetenv(updateStartedVariable);
    qunsetenv(updateFailedVariable);
    qunsetenv(updateUnfitVariable);
    QString error;
    const UpdaterArguments arguments = UpdaterArguments::parse(words, error);
    if (!error.isEmpty()) {
        note(error);
        return 2;
    }
    Update update(arguments);
    const bool installed = update.run() == Update::Outcome::Installed;
    note(installed ? QStringLiteral("installed ") + arguments.package : update.error());
    return installed ? 0 : 1;
}
