// SPDX-License-Identifier: MIT
// updater -downloadurl=file:///… -downloadscale=N -installpath=… -lock=… -startup=…
// Ends with 0 when the update is installed, with 1 when the old program stays, with 2 on arguments
// that make no sense.
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "platform/utf8locale.h"
#include "updater/update.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

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

} // namespace

int main(int argc, char **argv)
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    // Of the update before this one.
    qunsetenv(updateStartedVariable);
    qunsetenv(updateFailedVariable);
    QString error;
    const UpdaterArguments arguments =
        UpdaterArguments::parse(QCoreApplication::arguments().mid(1), error);
    if (!error.isEmpty()) {
        note(error);
        return 2;
    }
    Update update(arguments);
    const bool installed = update.run() == Update::Outcome::Installed;
    note(installed ? QStringLiteral("installed ") + arguments.package : update.error());
    return installed ? 0 : 1;
}
